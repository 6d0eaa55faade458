/// Keeps a stereo sum within -1 .. 1: it looks a millisecond ahead and turns the
/// sound down smoothly for as long as it would be too loud. Below its ceiling it
/// changes nothing but the time: what goes in comes out `kDelay` frames later.
/// Allocates nothing.
#pragma once

#include <array>
#include <cstdint>

namespace vorn {

class Limiter {
 public:
  static constexpr int kDelay = 48;          ///< frames
  static constexpr float kCeiling = 0.999F;  ///< loudest sample that comes out

  /// Replaces `count` frames.
  void process(float* left, float* right, int count);

 private:
  struct Frame {
    float left = 0, right = 0;
  };

  float gainFor(float peak);
  float lowestOfWindow(float wanted);

  std::array<Frame, kDelay> delayed_{};
  int at_ = 0;

  // The gains that the frames of the window ask for, where none behind them asks
  // for less: the first is the lowest.
  struct Wanted {
    float gain;
    std::int64_t frame;
  };
  std::array<Wanted, kDelay + 1> falling_{};
  int first_ = 0, size_ = 0;
  std::int64_t frame_ = 0;

  double released_ = 1;  ///< the lowest gain, recovering slowly
  std::array<double, kDelay> smoothed_ = filledWithOnes();
  double smoothedSum_ = kDelay;
  std::int64_t untouchedFor_ = 2 * kDelay + 1;  ///< frames since a gain below 1 was used

  static constexpr std::array<double, kDelay> filledWithOnes() {
    std::array<double, kDelay> ones{};
    ones.fill(1);
    return ones;
  }
};

}  // namespace vorn
