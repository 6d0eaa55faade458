#include "race/race_clock.h"

#include <gtest/gtest.h>

#include "race/announcements.h"

namespace vorn {
namespace {

// Ticks that make this many seconds, on the upper side of the quotient's rounding.
double ticksOf(double seconds) {
  return seconds * kTicksPerSecond + 1e-6;
}

TEST(SecondsOfTicks, CutsOffAfterTheMillisecond) {
  EXPECT_EQ(secondsOfTicks(98), 10);
  EXPECT_EQ(secondsOfTicks(1), 0.102);  // 0.10204...
  EXPECT_EQ(secondsOfTicks(10), 1.020);
  EXPECT_EQ(secondsOfTicks(19), 1.938);  // 1.93877...
}

TEST(SecondsOfTicks, ThatDivideEvenlyMayStillFallShort) {
  EXPECT_EQ(secondsOfTicks(588), 59.999);  // 588 / 9.8 is a hair below 60 in binary
}

TEST(Settimes, TakesOffTheShareOfTheLastTickBeyondTheLine) {
  RaceState race;
  race.raceTicks = 100;
  race.lapPosition = 9410;
  settimes(race, 9000);
  EXPECT_EQ(race.raceTicks, 98);
  EXPECT_EQ(race.raceTime, 10);
}

TEST(Settimes, SplitsIntoHoursMinutesAndSeconds) {
  RaceState race;
  race.raceTicks = ticksOf(3725.5);
  settimes(race, 0);
  EXPECT_EQ(race.raceTime, 3725.5);
  EXPECT_EQ(race.raceHours, 1);
  EXPECT_EQ(race.raceMinutes, 2);
  EXPECT_EQ(race.raceSeconds, 5.5);
}

TEST(Settimes, AWholeMinuteIsAMinute) {
  RaceState race;
  race.raceTicks = ticksOf(60);
  settimes(race, 0);
  EXPECT_EQ(race.raceMinutes, 1);
  EXPECT_EQ(race.raceSeconds, 0);
}

TEST(Settimes, SixtyMinutesAreAnHour) {
  RaceState race;
  race.raceTicks = ticksOf(3600);
  settimes(race, 0);
  EXPECT_EQ(race.raceHours, 1);
  EXPECT_EQ(race.raceMinutes, 0);
  EXPECT_EQ(race.raceSeconds, 0);
}

TEST(Settimes, KeepsTheHoursOfEarlierRaces) {
  RaceState race;
  race.raceHours = 1;
  race.raceMinutes = 7;
  race.raceTicks = 98;
  settimes(race, 0);
  EXPECT_EQ(race.raceHours, 1);
  EXPECT_EQ(race.raceMinutes, 0);
}

TEST(ElapsedTimeText, SpeaksDigitByDigitWithTwoBlanksAtTheEnd) {
  EXPECT_EQ(elapsedTimeText(ticksOf(75.5)), "1 minute 15 point 5 0 0  seconds. ");
  EXPECT_EQ(elapsedTimeText(0), "0 point 0 0 0  seconds. ");
  EXPECT_EQ(elapsedTimeText(1), "0 point 1 0 2  seconds. ");
}

TEST(ElapsedTimeText, AWholeMinuteStaysSixtySeconds) {
  EXPECT_EQ(elapsedTimeText(ticksOf(60)), "60 point 0 0 0  seconds. ");
  EXPECT_EQ(elapsedTimeText(ticksOf(60.5)), "1 minute 0 point 5 0 0  seconds. ");
}

TEST(ElapsedTimeText, AWholeHourStaysSixtyMinutes) {
  EXPECT_EQ(elapsedTimeText(ticksOf(3660)), "60 minutes 60 point 0 0 0  seconds. ");
  EXPECT_EQ(elapsedTimeText(ticksOf(7325)), "2 hours 2 minutes 5 point 0 0 0  seconds. ");
}

}  // namespace
}  // namespace vorn
