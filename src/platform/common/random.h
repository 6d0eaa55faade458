/// The one generator of chance. Its engine and its mapping are fixed to the bit,
/// so that a seed gives the same numbers everywhere.
#pragma once

#include <cstdint>
#include <random>

namespace vorn {

class RandomSource {
 public:
  explicit RandomSource(std::uint64_t seed) : engine_(seed) {}

  void reseed(std::uint64_t seed) { engine_.seed(seed); }
  /// The next number, 0 up to, not including, 1: the engine's upper 53 bits.
  double fraction() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }

 private:
  std::mt19937_64 engine_;
};

}  // namespace vorn
