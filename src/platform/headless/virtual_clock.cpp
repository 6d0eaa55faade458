#include "platform/headless/virtual_clock.h"

namespace vorn {

namespace chr = std::chrono;

void VirtualClock::advanceTo(std::int64_t ms) {
  if (ms <= now_) return;
  if (listener_) listener_(ms - now_);
  now_ = ms;
}

std::int32_t VirtualClock::tickCount() const {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(tickCount_) + static_cast<std::uint32_t>(now_));
}

chr::milliseconds VirtualClock::sinceFirstMidnight() const {
  return timeOfDay_ + chr::milliseconds(now_);
}

double VirtualClock::secondsSinceMidnight() const {
  return static_cast<double>((sinceFirstMidnight() % chr::days(1)).count()) / 1000.0;
}

Date VirtualClock::today() const {
  const chr::year_month_day day = chr::sys_days(date_) + chr::floor<chr::days>(sinceFirstMidnight());
  return {static_cast<int>(unsigned(day.month())), static_cast<int>(unsigned(day.day())), int(day.year())};
}

}  // namespace vorn
