#include "platform/mixing/limiter.h"

#include <algorithm>
#include <cmath>

namespace vorn {
namespace {

/// Share of the way back to 1 made good a frame: 80 ms until two thirds are.
constexpr double kRecovery = 1 / (0.080 * 48000);

/// Gains nearer to 1 than this are 1: nobody hears the difference.
constexpr double kAlmostOne = 0.9999;

}  // namespace

void Limiter::process(float* left, float* right, int count) {
  for (int i = 0; i < count; ++i) {
    const float gain = gainFor(std::max(std::abs(left[i]), std::abs(right[i])));
    Frame& place = delayed_[at_];
    const Frame due = place;
    place = {left[i], right[i]};
    at_ = (at_ + 1) % kDelay;
    left[i] = due.left * gain;
    right[i] = due.right * gain;
  }
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
  double& oldest = smoothed_[frame_ % kDelay];
  smoothedSum_ += released_ - oldest;
  oldest = released_;
  ++frame_;
  return static_cast<float>(std::min(1.0, smoothedSum_ / kDelay));
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
