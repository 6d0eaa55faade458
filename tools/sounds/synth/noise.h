/// Chance for recipes: a counter-based generator of our own, so that a sound
/// comes out the same on every machine and however many are made at once.
#pragma once

#include <cstdint>
#include <string_view>

#include "signal.h"

namespace vorn::synth {

/// A stream of random numbers. Two streams of one seed and purpose are equal.
class Noise {
 public:
  explicit Noise(std::uint64_t seed) : seed_(seed) {}
  Noise(std::uint64_t seed, std::string_view purpose);

  double next();                            ///< -1 .. 1, flat
  double between(double low, double high);  ///< flat
  int below(int count);                     ///< 0 .. count - 1
  bool chance(double probability);
  /// Triangular between -1 and 1: the noise that makes rounding inaudible.
  double triangular();
  std::uint64_t seed() const { return seed_; }

 private:
  std::uint64_t bits();

  std::uint64_t seed_;
  std::uint64_t counter_ = 0;
};

/// A number for `text` that is the same everywhere.
std::uint64_t seedOf(std::string_view text);

/// White noise.
Signal white(Noise& noise, int frames);

/// A control curve that wanders between about -1 and 1 and meets itself at the
/// end: harmonics `lowest` .. `highest` of its length, with random phases.
Signal wander(Noise& noise, int frames, int lowest, int highest);

}  // namespace vorn::synth
