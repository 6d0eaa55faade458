/// Notices that something which should go on does not. It counts only the time
/// it is watched, so that a program that was halted for a while is not misjudged.
#pragma once

#include <chrono>
#include <cstdint>

namespace vorn {

class Watchdog {
 public:
  using Time = std::chrono::steady_clock::time_point;

  explicit Watchdog(std::chrono::milliseconds patience) : patience_(patience) {}
  /// True once `progress` has stayed the same for as long as patience lasts.
  bool isStuck(std::uint64_t progress, Time now);
  /// There is nothing to watch for the time being.
  void rest() { isWatching_ = false; }

 private:
  const std::chrono::milliseconds patience_;
  bool isWatching_ = false;
  std::uint64_t progress_ = 0;
  Time lastLook_;
  std::chrono::nanoseconds idleFor_{};
};

}  // namespace vorn
