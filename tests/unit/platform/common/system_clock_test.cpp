#include "platform/common/system_clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <string>
#include <thread>
#include <tuple>

namespace vorn {
namespace {

/// The player's place for as long as it lives.
class Place {
 public:
  explicit Place(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
  }
  ~Place() {
    unsetenv("TZ");
    tzset();
  }
};

using Now = std::tuple<int, int, int, int>;  ///< year, month, day, second of that day

Now told() {
  const Date date = localDate();
  return {date.year, date.month, date.day, static_cast<int>(localSecondsSinceMidnight())};
}

Now shiftedBy(std::chrono::hours offset) {
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()) + offset;
  const auto day = std::chrono::floor<std::chrono::days>(now);
  const std::chrono::year_month_day date(day);
  return {int(date.year()), static_cast<int>(unsigned(date.month())), static_cast<int>(unsigned(date.day())),
          static_cast<int>((now - day).count())};
}

TEST(SystemClock, IsThatOfThePlayersPlace) {
  for (const int hours : {-11, 0, 12}) {
    // A zone's name counts the other way: the hours to be added to local time.
    const Place place(("HERE" + std::to_string(-hours)).c_str());
    const std::chrono::hours offset(hours);
    for (;;) {
      const Now before = shiftedBy(offset);
      const Now now = told();
      if (shiftedBy(offset) != before) continue;  // a second has passed meanwhile
      EXPECT_EQ(now, before) << hours;
      break;
    }
  }
}

TEST(SystemClock, SeedsDifferFromOneMomentToTheNext) {
  const std::uint64_t seed = clockSeed();
  std::this_thread::sleep_for(std::chrono::milliseconds(1));
  EXPECT_NE(clockSeed(), seed);
}

}  // namespace
}  // namespace vorn
