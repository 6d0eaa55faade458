#include "race/announcements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "race/race_clock.h"
#include "records/log.h"
#include "unit/race/on_track.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Answer = void (*)(GameState&);

constexpr int kGuardMs = 750;

void pass(GameRig& rig, std::int64_t milliseconds) {
  for (std::int64_t i = 0; i < milliseconds; ++i) rig.g.platform.yield();
}

// The one text of an answer, which cuts off whatever is being said.
std::string answerOf(GameRig& rig, Answer ask) {
  const auto spoken = rig.spokenIn(ask);
  if (spoken.size() != 2 || spoken[0] != "purge") return "not one answer";
  return spoken[1];
}

TEST(Saycspot, SaysThePlaceAsAWholeNumber) {
  for (const auto& [place, said] : {std::pair{50.0, "50"},
                                    {49.5, "50"},
                                    {50.5, "50"},
                                    {2.5, "2"},
                                    {3.5, "4"},
                                    {0.0, "0"},
                                    {100.0, "100"},
                                    {-0.3, "0"}}) {
    GameRig rig;
    rig.g.lateralPosition = place;
    EXPECT_EQ(answerOf(rig, saycspot), std::string("queue ") + said);
  }
}

TEST(SayGear, SaysTheGear) {
  GameRig rig;
  rig.g.gear = 3;
  EXPECT_EQ(answerOf(rig, SayGear), "queue 3");
}

TEST(SaySpeed, SaysTheSpeedAsAWholeNumber) {
  for (const auto& [speed, said] : {std::pair{177.5, "178"}, {178.5, "178"}, {0.4, "0"}, {99.51, "100"}}) {
    GameRig rig;
    rig.g.speed = speed;
    EXPECT_EQ(answerOf(rig, SaySpeed), std::string("queue ") + said);
  }
}

TEST(SayLap, SaysTheLapBeingDriven) {
  GameRig rig;
  EXPECT_EQ(answerOf(rig, SayLap), "queue 1");
  rig.g.lapsCompleted = 4;
  pass(rig, kGuardMs);
  EXPECT_EQ(answerOf(rig, SayLap), "queue 5");
}

TEST(SayGTV, SaysTheFuelToATenth) {
  for (const auto& [fuel, said] : {std::pair{22.0, "22"},
                                   {21.94, "21.9"},
                                   {21.95, "22"},
                                   {3.02, "3"},
                                   {0.25, "0.2"},
                                   {0.04, "0"},
                                   {0.5, "0.5"}}) {
    GameRig rig;
    rig.g.fuel = fuel;
    EXPECT_EQ(answerOf(rig, SayGTV), std::string("queue ") + said);
  }
}

TEST(SayCurTime, SaysTheElapsedTimeInWords) {
  GameRig rig;
  rig.g.raceTicks = 75.5 * 9.8 + 1e-6;
  EXPECT_EQ(answerOf(rig, SayCurTime), "queue 1 minute 15 point 5 0 0  seconds. ");
}

TEST(ElapsedTimeText, KeepsTheMillisecondsWhenItTakesOutAMinute) {
  EXPECT_EQ(elapsedTimeText(61.999 * 9.8 + 1e-6), "1 minute 1 point 9 9 9  seconds. ");
  // Minutes taken out leave noise: 60.007 less 60 is a little below seven thousandths.
  EXPECT_EQ(elapsedTimeText(60.007 * 9.8 + 1e-6), "1 minute 0 point 0 0 7  seconds. ");
}

TEST(ElapsedTimeText, OfReactionsAndPenaltiesThatAreNoWholeTicks) {
  EXPECT_EQ(elapsedTimeText(0.7), "0 point 0 7 1  seconds. ");
}

// The guard against repetition.

class Guarded : public testing::TestWithParam<Answer> {};

TEST_P(Guarded, AnswersOnceInSevenHundredAndFiftyMilliseconds) {
  GameRig rig;
  EXPECT_EQ(rig.spokenIn(GetParam()).size(), 2U);
  EXPECT_THAT(rig.spokenIn(GetParam()), IsEmpty());
  pass(rig, kGuardMs - 1);
  EXPECT_THAT(rig.spokenIn(GetParam()), IsEmpty());
  pass(rig, 1);
  EXPECT_EQ(rig.spokenIn(GetParam()).size(), 2U);
}

TEST_P(Guarded, AnswersTheFirstRequestAtANegativeTickCount) {
  HeadlessOptions options = GameRig::silentOptions();
  options.tickCount = -5;
  GameRig rig(Wheel::kKeys, options);
  EXPECT_EQ(rig.spokenIn(GetParam()).size(), 2U);
}

TEST_P(Guarded, AnswersTheFirstRequestRightAfterTheComputerWasStarted) {
  HeadlessOptions options = GameRig::silentOptions();
  options.tickCount = 10;
  GameRig rig(Wheel::kKeys, options);
  EXPECT_EQ(rig.spokenIn(GetParam()).size(), 2U);
}

TEST_P(Guarded, KeepsItsPaceWhereTheCounterWraps) {
  HeadlessOptions options = GameRig::silentOptions();
  options.tickCount = 2147483000;
  GameRig rig(Wheel::kKeys, options);
  rig.spokenIn(GetParam());
  pass(rig, kGuardMs - 1);
  ASSERT_LT(rig.g.platform.tickCount(), 0);
  EXPECT_THAT(rig.spokenIn(GetParam()), IsEmpty());
  pass(rig, 1);
  EXPECT_EQ(rig.spokenIn(GetParam()).size(), 2U);
}

TEST_P(Guarded, AnswersAtOnceAfterAnyOther) {
  constexpr Answer kAll[] = {saycspot, SayGear, SaySpeed, SayLap, SayGTV, SayCurTime};
  GameRig rig;
  for (const Answer other : kAll) {
    if (other != GetParam()) rig.spokenIn(other);
  }
  EXPECT_EQ(rig.spokenIn(GetParam()).size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Kinds, Guarded,
                         testing::Values(saycspot, SayGear, SaySpeed, SayLap, SayGTV, SayCurTime));

TEST(Guard, IsNotResetByARequestThatIsRefused) {
  GameRig rig;
  SaySpeed(rig.g);
  pass(rig, 700);
  EXPECT_THAT(rig.spokenIn(SaySpeed), IsEmpty());
  pass(rig, 50);
  EXPECT_EQ(rig.spokenIn(SaySpeed).size(), 2U);
}

TEST(Guards, LetTheGearCutOffTheSpeedAHundredMillisecondsLater) {
  GameRig rig;
  rig.g.speed = 123;
  SaySpeed(rig.g);
  pass(rig, 100);
  EXPECT_THAT(rig.spokenIn(SayGear), ElementsAre("purge", "queue 0"));
}

// What is told by itself.

TEST(Saygear2, SaysTheGearWithoutAGuard) {
  GameRig rig;
  rig.g.gear = 2;
  EXPECT_THAT(rig.spokenIn(saygear2), ElementsAre("purge", "queue 2"));
  EXPECT_THAT(rig.spokenIn(saygear2), ElementsAre("purge", "queue 2"));
}

TEST(Saygear2, NeitherSpeaksNorSilencesWithTheOptionOff) {
  GameRig rig;
  rig.g.autoGearAnnounce = kOff;
  EXPECT_THAT(rig.spokenIn(saygear2), IsEmpty());
}

// The finished time.

struct Finish {
  double laps;
  int hours, minutes;
  double seconds, time;
  const char* sentence;
};

class RaceTime : public testing::TestWithParam<Finish> {};

TEST_P(RaceTime, IsToldInOneSentence) {
  const Finish& finish = GetParam();
  GameRig rig;
  rig.g.lapsToRun = finish.laps;
  rig.g.raceHours = finish.hours;
  rig.g.raceMinutes = finish.minutes;
  rig.g.raceSeconds = finish.seconds;
  rig.g.raceTime = finish.time;
  SayRaceTime(rig.g);
  EXPECT_EQ(rig.g.raceTimeText, finish.sentence);
}

INSTANTIATE_TEST_SUITE_P(
    Finishes, RaceTime,
    testing::Values(
        Finish{1, 0, 1, 15.5, 75.5,
               " Your time for 1 lap on the Maple Leaf Tri Oval Track is, 1 minute 15 point 5 0 0 seconds. "},
        Finish{
            2, 0, 2, 0.004, 120.004,
            " Your time for 2 laps on the Maple Leaf Tri Oval Track is, 2 minutes 0 point 0 0 4 seconds. "},
        Finish{2.5, 0, 0, 59.1, 59.1,
               " Your time for 2.5 laps on the Maple Leaf Tri Oval Track is, 59 point 1 0 0 seconds. "},
        Finish{
            0.5, 0, 1, 0, 60,
            " Your time for 0.5 lap on the Maple Leaf Tri Oval Track is, 1 minute 0 point 0 0 0 seconds. "},
        Finish{-1, 0, 0, 42.12, 42.12,
               " Your time for -1 lap on the Maple Leaf Tri Oval Track is, 42 point 1 2 0 seconds. "},
        Finish{60, 1, 2, 5.5, 3725.5,
               " Your time for 60 laps on the Maple Leaf Tri Oval Track is, 1 hour 2 minutes 5 point 5 0 0 "
               "seconds. "},
        Finish{9999, 2, 0, 7, 7207,
               " Your time for 9999 laps on the Maple Leaf Tri Oval Track is, 2 hours 7 point 0 0 0 "
               "seconds. "}));

TEST(RaceTimeDigits, ComeFromTheWholeTimeAndNotFromItsSeconds) {
  GameRig rig;
  rig.g.raceTicks = 60.102 * 9.8 + 1e-6;
  settimes(rig.g, 0);
  SayRaceTime(rig.g);
  EXPECT_EQ(rig.g.raceTimeText,
            " Your time for 1 lap on the Maple Leaf Tri Oval Track is, 1 minute 0 point 1 0 2 seconds. ");
}

TEST(SayRaceTime, LogsItsSentenceAndSaysNothing) {
  GameRig rig;
  rig.g.raceTime = rig.g.raceSeconds = 50;
  rig.does("press A");
  EXPECT_THAT(rig.told(SayRaceTime), ElementsAre("file append vorn1log.txt"));
  const std::string log = rig.g.platform.files().read(kLogFile);
  EXPECT_TRUE(log.ends_with(rig.g.raceTimeText + "\r\n")) << log;
  EXPECT_EQ(rig.g.lastKeyCode, "");  // the pending key is forgotten
}

TEST(SayRaceTime, FailsForATrackThatIsNone) {
  GameRig rig;
  rig.g.trackChoice = 13;
  EXPECT_ANY_THROW(SayRaceTime(rig.g));
}

}  // namespace
}  // namespace vorn
