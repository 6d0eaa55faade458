/// Notices that something which should go on does not. It counts only the time it
/// is watched, so that a program that was halted for a while is not misjudged.
#pragma once

#include <chrono>
#include <cstdint>

namespace vorn {

class Watchdog {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// How long `progress` has stayed the same.
  std::chrono::nanoseconds idleFor(std::uint64_t progress, Time now);
  /// There is nothing to watch for the time being.
  void rest() { isWatching_ = false; }

 private:
  bool isWatching_ = false;
  std::uint64_t progress_ = 0;
  Time lastLook_;
  std::chrono::nanoseconds idleFor_{};
};

}  // namespace vorn
