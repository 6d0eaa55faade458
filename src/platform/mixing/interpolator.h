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
  static constexpr int kReach = 28;
  /// Fastest step that is still band-limited, in source frames an output frame.
  static constexpr double kFastest = 2.1;

  /// `mayBeWider`: uses what this processor has beyond those of its kind; the samples are the same.
  explicit Interpolator(bool mayBeWider = true);

  /// Writes `count` samples: the source at its position and each of `offsets`
  /// behind it, which follow each other at about `step`.
  void read(const SampleSource& source, const Phase* offsets, Phase step, float* out, int count) const;

  /// A piece of a table that the processor fetches at once.
  struct alignas(64) CacheLine {
    std::array<float, 16> taps;
  };

 private:
  static constexpr std::size_t kBanks = 5;

  /// A kernel: for each of the sub-sample places its taps, then what to add to
  /// them on the way to the next place; and the version of the code for this processor.
  struct Bank {
    std::vector<CacheLine> lines;
    void (*read)(const CacheLine* lines, const SampleSource& source, const Phase* offsets, float* out,
                 int count);
  };
  std::array<Bank, kBanks> banks_;  ///< the shortest first
};

}  // namespace vorn
