#include "platform/common/watchdog.h"

#include <algorithm>

namespace vorn {

std::chrono::nanoseconds Watchdog::idleFor(std::uint64_t progress, Time now) {
  constexpr std::chrono::milliseconds kLongestLook{100};  // more than that and the program did not run
  if (!isWatching_ || progress != progress_) {
    isWatching_ = true;
    idleFor_ = {};
  } else {
    idleFor_ += std::min<std::chrono::nanoseconds>(now - lastLook_, kLongestLook);
  }
  progress_ = progress;
  lastLook_ = now;
  return idleFor_;
}

}  // namespace vorn
