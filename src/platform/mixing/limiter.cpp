#include "platform/mixing/limiter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace vorn {
namespace {

/// Share of the way back to 1 made good a frame: 80 ms until two thirds are.
constexpr double kRecovery = 1 / (0.080 * 48000);

/// Gains nearer to 1 than this are 1: nobody hears the difference.
constexpr double kAlmostOne = 0.9999;

/// The curve as it is estimated never rises above so many times its highest sample.
constexpr float kHighestCurve = 1.9F;

}  // namespace

/// The points lie a quarter, a half and three quarters of the way between the two frames in the middle;
/// each is a sum of all frames weighted with a sinc in a cosine bell.
Limiter::Limiter() {
  constexpr int kMiddle = kCurveFrames / 2 - 1;
  for (int point = 0; point < kCurvePoints; ++point) {
    std::array<double, kCurveFrames> weights;
    double sum = 0;
    for (int frame = 0; frame < kCurveFrames; ++frame) {
      const double turn = std::numbers::pi * (frame - kMiddle - (point + 1.0) / (kCurvePoints + 1));
      weights[frame] = std::sin(turn) / turn * std::pow(std::cos(turn / kCurveFrames), 2);
      sum += weights[frame];
    }
    std::transform(weights.begin(), weights.end(), curve_[point].begin(),
                   [&](double weight) { return static_cast<float>(weight / sum); });
  }
}

void Limiter::process(float* left, float* right, int count) {
  for (int i = 0; i < count; ++i) {
    Frame& place = delayed_[at_];
    const Frame due = place;
    place = {left[i], right[i]};
    at_ = (at_ + 1) % kDelay;
    const float gain = gainFor(peakWith(place));
    left[i] = due.left * gain;
    right[i] = due.right * gain;
  }
}

/// The height of the latest frame, or of the curve through the latest of which it is the last one.
float Limiter::peakWith(const Frame& latest) {
  const float peak = std::max(std::abs(latest.left), std::abs(latest.right));
  quietFor_ = peak * kHighestCurve > kCeiling ? 0 : quietFor_ + 1;
  return quietFor_ < kCurveFrames ? std::max(peak, curvePeak()) : peak;
}

float Limiter::curvePeak() const {
  std::array<float, kCurvePoints> left{}, right{};
  for (int i = 0; i < kCurveFrames; ++i) {
    const Frame& frame = delayed_[(at_ + kDelay - kCurveFrames + i) % kDelay];
    for (int point = 0; point < kCurvePoints; ++point) {
      left[point] += frame.left * curve_[point][i];
      right[point] += frame.right * curve_[point][i];
    }
  }
  float peak = 0;
  for (int point = 0; point < kCurvePoints; ++point) {
    peak = std::max({peak, std::abs(left[point]), std::abs(right[point])});
  }
  return peak;
}

/// The gain for the frame that is due now, `peak` being the one coming in. Each
/// incoming frame's wish holds until that frame is due, and the mean over as many
/// frames turns the steps into slopes that arrive in time.
float Limiter::gainFor(float peak) {
  const float wanted = peak > kCeiling ? kCeiling / peak : 1.0F;
  untouchedFor_ = wanted < 1 ? 0 : untouchedFor_ + 1;
  if (untouchedFor_ > 2 * kDelay && released_ == 1) {
    size_ = 0;
    ++frame_;
    return 1;
  }
  const float lowest = lowestOfWindow(wanted);
  released_ = std::min<double>(lowest, released_ + (1 - released_) * kRecovery);
  if (released_ > kAlmostOne) {
    released_ = 1;
  } else {
    untouchedFor_ = 0;
  }
  double& oldest = smoothed_[frame_ % kWayDown];
  smoothedSum_ += released_ - oldest;
  oldest = released_;
  ++frame_;
  return static_cast<float>(std::min(1.0, smoothedSum_ / kWayDown));
}

float Limiter::lowestOfWindow(float wanted) {
  constexpr int kRoom = kDelay + 1;
  while (size_ > 0 && falling_[(first_ + size_ - 1) % kRoom].gain >= wanted) {
    --size_;
  }
  if (size_ > 0 && falling_[first_].frame + kDelay < frame_) {
    first_ = (first_ + 1) % kRoom;
    --size_;
  }
  falling_[(first_ + size_++) % kRoom] = {wanted, frame_};
  return falling_[first_].gain;
}

}  // namespace vorn
