/// The time of a headless session. It stands still but for `advanceTo`. Nothing here waits.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

#include "platform/platform.h"

namespace vorn {

class VirtualClock {
 public:
  VirtualClock(std::int32_t tickCount, std::chrono::year_month_day date, std::chrono::milliseconds timeOfDay)
      : tickCount_(tickCount), date_(date), timeOfDay_(timeOfDay) {}

  std::int64_t now() const { return now_; }  ///< milliseconds since the session began
  /// Moves on to `ms`, not before now; whoever listens hears how far first.
  void advanceTo(std::int64_t ms);
  /// `listener` is told how many milliseconds are about to pass, in which nothing happens.
  void onAdvance(std::function<void(std::int64_t milliseconds)> listener) { listener_ = std::move(listener); }

  std::int32_t tickCount() const;       ///< milliseconds, wraps from 2^31 - 1 to -2^31
  double secondsSinceMidnight() const;  ///< 0 up to 86400
  Date today() const;

 private:
  std::chrono::milliseconds sinceFirstMidnight() const;

  std::int64_t now_ = 0;
  std::int32_t tickCount_;
  std::chrono::year_month_day date_;
  std::chrono::milliseconds timeOfDay_;
  std::function<void(std::int64_t)> listener_;
};

}  // namespace vorn
