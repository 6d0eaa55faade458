/// Keeps a stereo sum, and the curve through its samples that a loudspeaker draws,
/// below -1 decibel: it looks a millisecond ahead and turns the sound down smoothly
/// for as long as it would be too loud. Below its ceiling it changes nothing but the
/// time: what goes in comes out `kDelay` frames later. Allocates nothing.
#pragma once

#include <array>
#include <cstdint>

namespace vorn {

class Limiter {
 public:
  static constexpr int kDelay = 48;  ///< frames
  /// Loudest sample that comes out: -1 decibel and what the estimate of the curve may miss.
  static constexpr float kCeiling = 0.876F;

  Limiter();

  /// Replaces `count` frames.
  void process(float* left, float* right, int count);

 private:
  struct Frame {
    float left = 0, right = 0;
  };

  /// Frames that the curve between two samples is estimated from, and the points of it.
  static constexpr int kCurveFrames = 12, kCurvePoints = 3;
  /// A wish of the curve comes so much later than its samples, so the way down is so much shorter.
  static constexpr int kWayDown = kDelay - kCurveFrames / 2;

  float peakWith(const Frame& latest);
  float curvePeak() const;
  float gainFor(float peak);
  float lowestOfWindow(float wanted);

  std::array<Frame, kDelay> delayed_{};
  int at_ = 0;
  std::array<std::array<float, kCurveFrames>, kCurvePoints> curve_;  ///< what the frames weigh in each point
  int quietFor_ = kCurveFrames;  ///< frames too soft for any curve through them to matter

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
  std::array<double, kWayDown> smoothed_ = filledWithOnes();
  double smoothedSum_ = kWayDown;
  std::int64_t untouchedFor_ = 2 * kDelay + 1;  ///< frames since a gain below 1 was used

  static constexpr std::array<double, kWayDown> filledWithOnes() {
    std::array<double, kWayDown> ones{};
    ones.fill(1);
    return ones;
  }
};

}  // namespace vorn
