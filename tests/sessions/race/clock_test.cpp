// Whole races at awkward times: where the millisecond counter wraps or is
// negative, and across midnight.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sessions/race/race_scene.h"

namespace vorn {
namespace {

// The ticks of a race started at this tick count, as raceTicks and milliseconds.
std::vector<std::pair<double, std::int64_t>> ticksAt(std::int32_t tickCount) {
  Session session;
  session.options.tickCount = tickCount;
  session.options.limitMs = 120000;
  raceInAHurry(session);
  session.script("wait 500\n");
  const TraceRecord& trace = session.run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  EXPECT_TRUE(trace.said(" Your time for "));
  std::vector<std::pair<double, std::int64_t>> ticks;
  for (const TraceLine& tick : trace.ticks()) ticks.emplace_back(tick.at("raceTicks"), tick.at("ms"));
  return ticks;
}

TEST(RaceAtATickCount, IsTheSameWhereverTheCounterStands) {
  const auto usual = ticksAt(1000);
  ASSERT_FALSE(usual.empty());
  EXPECT_EQ(ticksAt(-5), usual);
  EXPECT_EQ(ticksAt(2147483000), usual);  // wraps in the menu
  EXPECT_EQ(ticksAt(-2147483647 - 1), usual);
}

TEST(RaceAtATickCount, IsTheSameWhereTheCounterWrapsAnywhereInIt) {
  const auto usual = ticksAt(1000);
  ASSERT_FALSE(usual.empty());
  const std::int64_t firstTick = usual.front().second;
  // In the set-up, while cranking, in the countdown, at the horn, between ticks, at the finish.
  for (const std::int64_t wrapMs : {firstTick - 17000, firstTick - 12500, firstTick - 5000, firstTick - 90,
                                    firstTick + 150, usual.back().second + 1500}) {
    EXPECT_EQ(ticksAt(static_cast<std::int32_t>(2147483648LL - wrapMs)), usual) << wrapMs - firstTick;
  }
}

// When the race is over and the results have been queued, milliseconds.
std::int64_t resultsAt(const TraceRecord& trace) {
  return trace.firstSaying(" Your time for ")->at("ms");
}

TEST(RaceAcrossMidnight, GoesOnAfterTheResults) {
  Session first;
  raceInAHurry(first);
  const std::int64_t results = resultsAt(first.run());
  // Midnight falls into the fifth of a second after the results.
  const std::int64_t beginsAt = 86400000 - results - 100;
  Session second;
  second.options.timeOfDay = std::chrono::seconds(beginsAt / 1000);
  second.options.limitMs = 120000;
  second.script("wait " + std::to_string(beginsAt % 1000) + "\n");
  raceInAHurry(second);
  second.script("wait say  Enter your name as the new record holder. \n");
  second.run();
  EXPECT_EQ(second.exitStatus(), 0) << second.diagnostics();
}

}  // namespace
}  // namespace vorn
