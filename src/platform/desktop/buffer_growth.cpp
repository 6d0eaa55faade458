#include "platform/desktop/buffer_growth.h"

#include <algorithm>

namespace vorn {
namespace {

constexpr double kHeard = 1.5;        ///< milliseconds: what is shorter may be the clock's
constexpr int kRequestsToMakeUp = 6;  ///< within which a device that has not run dry is full again
constexpr double kClocksDiffer = 0.0005;

/// Longer silence has another reason than a small buffer: the machine slept, the device was changed.
constexpr double kLongestHole = 250;  // ms
constexpr std::chrono::seconds kTooOften{10};

constexpr const char* kLineEnd = "\r\n";

}  // namespace

double HoleFinder::handedOver(Time now, int frames) {
  const double length = frames * 1000.0 / rate_;
  if (!hasBegun_) {
    hasBegun_ = true;
    last_ = now;
    return 0;
  }
  const double passed = std::chrono::duration<double, std::milli>(now - last_).count();
  last_ = now;
  lead_ += length - passed;
  bestLead_ = std::max(lead_, bestLead_ - kClocksDiffer * passed);
  const double late = bestLead_ - lead_;
  if (late <
      std::max(kHeard, length)) {  // a device that asks for whole pieces may stay short of a part of one
    lateFor_ = 0;
    return 0;
  }
  leastLate_ = lateFor_ == 0 ? late : std::min(leastLate_, late);
  if (++lateFor_ < kRequestsToMakeUp) {
    return 0;
  }
  lateFor_ = 0;
  bestLead_ -= leastLate_;
  return leastLate_;
}

void BufferGrowth::hole(HoleFinder::Time now, double milliseconds) {
  if (!mayGrow_ || milliseconds > kLongestHole) {
    return;
  }
  const bool isTooOften = hasLastHole_ && now - lastHole_ < kTooOften;
  hasLastHole_ = !isTooOften;
  lastHole_ = now;
  if (isTooOften) {
    frames_ = std::min(2 * frames_, kLargest);
  }
}

int bufferFromText(const std::string& text) {
  for (int frames = BufferGrowth::kSmallest; frames <= BufferGrowth::kLargest; frames *= 2) {
    if (text == bufferAsText(frames)) return frames;
  }
  return BufferGrowth::kSmallest;
}

std::string bufferAsText(int frames) {
  return std::to_string(frames) + kLineEnd;
}

}  // namespace vorn
