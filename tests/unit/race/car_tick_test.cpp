#include "race/car_tick.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "unit/race/on_track.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

TEST(CarTick, RunsInItsOrderOnTheKeyboard) {
  GameRig rig;
  putOnTrack(rig, 99, 2);
  GameState& g = rig.g;
  g.speedMarkSaid[4] = 0;
  g.poleDistance = 2950;
  rig.plan({"press LeftCtrl", "press LeftShift", "press Left", "press Up", "press RightShift",
            "press RightCtrl", "press PageUp", "press End", "press PageDown", "press Insert",
            "press Delete"});
  g.platform.yield();
  EXPECT_THAT(
      rig.told(checkstuff),
      ElementsAre("engineBuffer SetFrequency 22051",                                                 //
                  "sound19Buffer SetCurrentPosition 0", "sound19Buffer Play 0", "purge", "queue 3",  // shift
                  "purge", "queue 100",                                                // speed mark
                  StartsWith("engineBuffer SetCurrentPosition 11"),                    //
                  "sound9Buffer SetPan 400", "sound9Buffer SetVolume -1053",           // tyres
                  "sound18Buffer SetVolume -6500",                                     // groove
                  "wallLeftBuffer SetPan -1098", "wallRightBuffer SetPan 1102",        //
                  "wallLeftBuffer SetVolume -997", "wallRightBuffer SetVolume -1003",  //
                  "sound8Buffer Play 1", "sound8Buffer SetCurrentPosition 49951",      // brake
                  "purge", "queue 99",                                                 // speed
                  "purge", "queue 50",                                                 // place
                  "purge", "queue 3",                                                  // gear
                  "purge", "queue 22",                                                 // fuel
                  "purge", "queue 1",                                                  // lap
                  "hornBuffer Play 0",                                                 //
                  "purge", "queue 0 point 0 0 0  seconds. ",                           //
                  "sound29Buffer SetPan 1402", "sound29Buffer SetVolume -501",         // light pole
                  "sound29Buffer SetFrequency 9915", "sound29Buffer SetCurrentPosition 0",
                  "sound29Buffer Play 0",  //
                  "tick"));
  EXPECT_NEAR(g.speed, 99.148112, 1e-6);
  EXPECT_NEAR(g.engineRpm, 57.714286, 1e-6);
  EXPECT_DOUBLE_EQ(g.lateralPosition, 49.87);
  EXPECT_NEAR(g.poleDistance, 49.148112, 1e-6);
}

TEST(CarTick, RunsInItsOrderOnTheController) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 99, 2);
  GameState& g = rig.g;
  rig.plan({"axis X 3000", "axis Y 5000", "button 0 down", "button 1 down", "button 2 down", "button 4 down",
            "button 5 down", "button 6 down", "button 7 down", "button 8 down"});
  g.platform.yield();
  EXPECT_THAT(
      rig.told(checkstuff),
      ElementsAre("engineBuffer SetFrequency 22051",                                                 //
                  "sound19Buffer SetCurrentPosition 0", "sound19Buffer Play 0", "purge", "queue 3",  // shift
                  StartsWith("engineBuffer SetCurrentPosition 1"),                                   //
                  "sound9Buffer SetPan -400", "sound9Buffer SetVolume -916",                         // tyres
                  "sound18Buffer SetVolume -6500",                                                   // groove
                  "wallLeftBuffer SetPan -1140", "wallRightBuffer SetPan 1060",                      //
                  "wallLeftBuffer SetVolume -1040", "wallRightBuffer SetVolume -960",                //
                  "sound8Buffer Play 1", "sound8Buffer SetCurrentPosition 47567",                    // brake
                  "purge", "queue 94",                                                               // speed
                  "purge", "queue 52",                                                               // place
                  "purge", "queue 3",                                                                // gear
                  "purge", "queue 22",                                                               // fuel
                  "purge", "queue 1",                                                                // lap
                  "hornBuffer Play 0",                                                               //
                  "purge", "queue 0 point 0 0 0  seconds. ",                                         //
                  "tick"));
  EXPECT_NEAR(g.speed, 94.416585, 1e-6);
  EXPECT_DOUBLE_EQ(g.lateralPosition, 52);
}

TEST(CarTick, OfAStandingCarSilencesTyresMarblesAndBrake) {
  GameRig rig;
  putOnTrack(rig, 0, 1);
  EXPECT_THAT(rig.told(checkstuff),
              ElementsAre("engineBuffer SetFrequency 22051", "engineBuffer SetCurrentPosition 0",
                          "sound9Buffer SetVolume -6500", "sound18Buffer SetVolume -6500",
                          "wallLeftBuffer SetPan -1100", "wallRightBuffer SetPan 1100",
                          "wallLeftBuffer SetVolume -1000", "wallRightBuffer SetVolume -1000",
                          "sound8Buffer Stop", "sound8Buffer SetCurrentPosition 0", "tick"));
}

TEST(CarTick, LastsNinetyNineMilliseconds) {
  GameRig rig;
  putOnTrack(rig, 100, 2);
  EXPECT_EQ(rig.timed(checkstuff), 99);
  EXPECT_EQ(rig.timed(checkstuff), 99);
}

TEST(CarTick, LastsNoLongerWithEverythingAsked) {
  GameRig rig;
  putOnTrack(rig, 100, 2);
  rig.plan({"press Up", "press RightShift", "press Insert"});
  rig.g.poleDistance = 2990;
  EXPECT_EQ(rig.timed(checkstuff), 99);
}

TEST(CarTick, CoversTheSpeedAndCountsOne) {
  GameRig rig;
  putOnTrack(rig, 100, 2);
  rig.g.lapPosition = 500;
  rig.g.raceTicks = 7.5;
  tick(rig);
  EXPECT_DOUBLE_EQ(rig.g.lapPosition, 500 + 96.4);
  EXPECT_DOUBLE_EQ(rig.g.poleDistance, 96.4);
  EXPECT_EQ(rig.g.raceTicks, 8.5);
}

TEST(CarTick, TellsTheTraceWhereItIsBeforeItWaits) {
  GameRig rig;
  putOnTrack(rig, 100, 2);
  const std::int64_t start = rig.now();
  tick(rig);
  const TraceLine line = rig.trace().ticks().back();
  EXPECT_EQ(line.at("ms"), start + 1);  // a tick's one yield
  EXPECT_EQ(line.at("raceTicks"), 1);
  EXPECT_EQ(line.at("lapPosition"), 96.4);
  EXPECT_EQ(line.at("speed"), 96.4);
  EXPECT_EQ(line.at("gear"), 2);
}

TEST(CarTick, PlaysALightPoleEveryThreeThousandUnits) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.g.poleDistance = 2903;  // 97.2 more is just above
  EXPECT_THAT(rig.told(checkstuff), Contains("sound29Buffer Play 0"));
  EXPECT_NEAR(rig.g.poleDistance, 0.2, 1e-9);
  EXPECT_THAT(rig.told(checkstuff), Not(Contains(HasSubstr("sound29Buffer"))));
}

TEST(CarTick, PlaysNoLightPoleAtExactlyThreeThousandUnits) {
  GameRig rig;
  putOnTrack(rig, 0, 4);
  rig.g.poleDistance = 3000;
  EXPECT_THAT(rig.told(checkstuff), Not(Contains(HasSubstr("sound29Buffer"))));
  EXPECT_EQ(rig.g.poleDistance, 3000);
}

TEST(CarTick, StopsTheEngineOfACarThatStandsWithoutFuel) {
  GameRig rig;
  putOnTrack(rig, 3, 1);
  rig.g.fuel = 0;
  EXPECT_THAT(rig.told(checkstuff), Contains("engineBuffer Stop"));
  EXPECT_EQ(rig.g.speed, 0);
  EXPECT_THAT(rig.told(checkstuff), Contains("engineBuffer Stop"));  // on every standing tick
}

TEST(CarTick, LetsACarThatStillRollsWithoutFuelSound) {
  GameRig rig;
  putOnTrack(rig, 50, 1);
  rig.g.fuel = 0;
  EXPECT_THAT(rig.told(checkstuff), Not(Contains("engineBuffer Stop")));
}

TEST(CarTick, LetsACarThatStandsWithFuelSound) {
  GameRig rig;
  putOnTrack(rig, 0, 1);
  EXPECT_THAT(rig.told(checkstuff), Not(Contains("engineBuffer Stop")));
}

// The last fuel is burned late in the tick, before the engine is looked at.
TEST(CarTick, StopsTheEngineInTheTickThatBurnsTheLastFuel) {
  GameRig rig;
  putOnTrack(rig, 0, 0);
  rig.g.engineRpm = 50;
  rig.g.fuel = 0.0001;
  EXPECT_THAT(rig.told(checkstuff), Contains("engineBuffer Stop"));
}

// Requests.

struct RequestCase {
  const char* key;
  const char* button;
  const char* answer;
};

class Requests : public testing::TestWithParam<RequestCase> {};

TEST_P(Requests, AreMadeByKey) {
  GameRig rig;
  putOnTrack(rig, 0, 1);
  rig.does(std::string("press ") + GetParam().key);
  EXPECT_THAT(rig.told(checkstuff), Contains(GetParam().answer));
}

TEST_P(Requests, AreMadeByButton) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 0, 1);
  rig.does(std::string("button ") + GetParam().button + " down");
  EXPECT_THAT(rig.told(checkstuff), Contains(GetParam().answer));
}

TEST_P(Requests, AreNotMadeByKeyInARaceOnTheController) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 0, 1);
  rig.does(std::string("press ") + GetParam().key);
  EXPECT_THAT(rig.told(checkstuff), Not(Contains(GetParam().answer)));
}

INSTANTIATE_TEST_SUITE_P(
    All, Requests,
    testing::Values(RequestCase{"RightShift", "0", "queue 0"}, RequestCase{"RightCtrl", "1", "queue 50"},
                    RequestCase{"PageUp", "4", "queue 1"}, RequestCase{"End", "2", "queue 22"},
                    RequestCase{"PageDown", "5", "queue 1"}, RequestCase{"Insert", "6", "hornBuffer Play 0"},
                    RequestCase{"Delete", "7", "queue 0 point 0 0 0  seconds. "}));

TEST(RequestsOfTheOtherDevice, TheStartButtonAsksForTheFuelInARaceOnTheKeyboardToo) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 0, 1);
  rig.g.inputDevice = kKeyboard;
  rig.does("button 2 down");
  EXPECT_THAT(rig.spokenIn(checkstuff), ElementsAre("purge", "queue 22"));
}

TEST(RequestsOfTheOtherDevice, NoOtherButtonAsksInARaceOnTheKeyboard) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 0, 1);
  rig.g.inputDevice = kKeyboard;
  rig.plan(
      {"button 0 down", "button 1 down", "button 4 down", "button 5 down", "button 6 down", "button 7 down"});
  rig.g.platform.yield();
  EXPECT_THAT(rig.spokenIn(checkstuff), IsEmpty());
}

TEST(RequestsHeld, AreAnsweredEverySevenHundredAndFiftyMilliseconds) {
  GameRig rig;
  putOnTrack(rig, 0, 1);
  rig.plan({"press RightShift"});
  tick(rig, 31);
  std::vector<std::int64_t> times;
  for (const TraceLine& line : rig.trace().of("speak")) {
    if (line.at("text") == "0") times.push_back(line.at("ms"));
  }
  ASSERT_GE(times.size(), 4U);
  // The first tick that is 750 ms or more after the last answer: eight ticks of 99 ms.
  for (std::size_t i = 1; i < times.size(); ++i) EXPECT_EQ(times[i] - times[i - 1], 8 * 99);
}

TEST(SpeedMarks, AreSaidOnceTheTickHasPassedThem) {
  GameRig rig;
  putOnTrack(rig, 0, 1);
  rig.g.speedMarkSaid.fill(0);
  rig.does("press LeftCtrl");
  EXPECT_THAT(rig.spokenIn([&](GameState&) { tick(rig, 9); }), IsEmpty());  // 24.3 mph
  EXPECT_THAT(rig.spokenIn(checkstuff), ElementsAre("purge", "queue 25"));  // 27
  EXPECT_THAT(rig.spokenIn(checkstuff), IsEmpty());
}

}  // namespace
}  // namespace vorn
