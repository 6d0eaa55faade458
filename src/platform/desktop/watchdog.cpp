#include "platform/desktop/watchdog.h"

#include <algorithm>

namespace vorn {
namespace {

/// More between two looks is time in which the program did not run.
constexpr std::chrono::milliseconds kLongestLook{100};

}  // namespace

bool Watchdog::isStuck(std::uint64_t progress, Time now) {
  if (!isWatching_ || progress != progress_) {
    isWatching_ = true;
    idleFor_ = {};
  } else {
    idleFor_ += std::min<std::chrono::nanoseconds>(now - lastLook_, kLongestLook);
  }
  progress_ = progress;
  lastLook_ = now;
  return idleFor_ >= patience_;
}

}  // namespace vorn
