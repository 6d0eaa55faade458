/// Reads a recording between its samples: a polyphase windowed sinc, band-limited
/// when the recording is played faster than it was made for. Pure but for the
/// tables built once; `read` allocates nothing and may be called on any thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vorn {

/// A place in a recording, or a step through it: source frames times 2^32.
using Phase = std::uint64_t;
inline constexpr int kPhaseBits = 32;

/// One channel of a recording, and where to read it.
struct SampleSource {
  const float* samples;
  std::int64_t frames;
  bool looping;    ///< beyond either end: the recording again, else silence
  Phase position;  ///< below the length where it loops
};

class Interpolator {
 public:
  /// Source frames on either side of a place that a sample may draw on, at most.
  static constexpr int kReach = 26;
  /// Fastest step that is still band-limited, in source frames an output frame.
  static constexpr double kFastest = 2.1;

  /// Samples that the processor handles at once.
  static constexpr int kLanes = 4;
  using Lanes = float __attribute__((vector_size(kLanes * sizeof(float))));

  Interpolator();

  /// Writes `count` samples: the source at its position and each of `offsets`
  /// behind it, which follow each other at about `step`.
  void read(const SampleSource& source, const Phase* offsets, Phase step, float* out, int count) const;

 private:
  static constexpr std::size_t kBanks = 5;

  /// A kernel each, the shortest first: for each of the sub-sample places its
  /// taps, then what to add to them on the way to the next place.
  std::array<std::vector<Lanes>, kBanks> banks_;
};

}  // namespace vorn
