// A crash from the impact to first gear.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "race/walls.h"
#include "unit/race/on_track.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Lines = std::vector<std::string>;

// How long the silent recordings last, and what surrounds them: three yields of
// forgetting a key before each, a tenth of a second after the wreck has begun to slide.
constexpr int kForget = 3;
constexpr int kImpactMs = kForget + kForget + 200;
constexpr int kSlideMs = 1000;
constexpr int kAdviceMs = 2 * (kForget + 1000) + kForget + 500;

void wreck(GameRig& rig, double speed = 150) {
  putOnTrack(rig, speed, 3);
  rig.g.forceCrash = 1;
  rig.g.lapPosition = 15000;
  rig.g.raceTicks = 1000;
}

// When, after the beginning of the crash, the car stands ready to be started.
constexpr int kRestartMs = kImpactMs + kForget + kSlideMs + kAdviceMs + kForget + 101;

Lines loaded(const std::string& file) {
  return {"oneShotBuffer create " + file, "oneShotBuffer SetCurrentPosition 0", "oneShotBuffer SetVolume 0",
          "oneShotBuffer SetFrequency 22051", "oneShotBuffer Play 0"};
}

void append(Lines& all, const Lines& more) {
  all.insert(all.end(), more.begin(), more.end());
}

Lines withoutInput(const Lines& lines) {
  Lines kept;
  for (const std::string& line : lines) {
    if (!line.starts_with("input ")) kept.push_back(line);
  }
  return kept;
}

Lines impact() {
  Lines lines = loaded("vorn15.wav");
  append(lines, {"oneShotBuffer Stop", "oneShotBuffer release", "engineBuffer Stop"});
  append(lines, loaded("vorn11.wav"));
  append(lines, {"engineBuffer Stop", "wallLeftBuffer Stop", "wallRightBuffer Stop", "warnBuffer Stop",
                 "sound18Buffer Stop", "sound9Buffer Stop", "sound10Buffer Stop", "sound8Buffer Stop",
                 "engineBuffer SetCurrentPosition 0", "warnBuffer SetVolume -2000", "warnBuffer Play 1"});
  return lines;
}

Lines advice() {
  Lines lines = {"oneShotBuffer release"};
  append(lines, loaded("vorn12.wav"));
  append(lines, {"oneShotBuffer Stop", "oneShotBuffer release"});
  append(lines, loaded("vorn13.wav"));
  append(lines, {"oneShotBuffer Stop", "oneShotBuffer release"});
  append(lines, loaded("vorn14.wav"));
  append(lines, {"oneShotBuffer Stop", "oneShotBuffer release"});
  return lines;
}

// The car is back in the middle; the cue stands where it was, halfway up.
Lines carPutBack() {
  return {"engineBuffer SetFrequency 22051",
          "wallLeftBuffer SetVolume -1000",
          "wallLeftBuffer SetPan -5000",
          "wallRightBuffer SetVolume -1000",
          "wallRightBuffer SetPan 5000",
          "wallLeftBuffer Play 1",
          "wallRightBuffer Play 1",
          "sound18Buffer SetVolume -6500",
          "sound18Buffer Play 1",
          "sound9Buffer SetVolume -6500",
          "sound9Buffer Play 1",
          "warnBuffer SetVolume -1500",
          "warnBuffer SetPan -3500",
          "warnBuffer Play 1"};
}

Lines engineStarted() {
  Lines lines = loaded("vorn2.wav");
  append(lines, {"oneShotBuffer SetVolume -800"});
  return lines;
}

TEST(CrashSequence, RunsToFirstGearInItsOrder) {
  GameRig rig;
  wreck(rig);
  rig.plan({"wait " + std::to_string(kRestartMs), "tap End", "wait 500", "press LeftCtrl", "wait 1000",
            "press Up"});
  Lines expected = impact();
  append(expected, advice());
  append(expected, carPutBack());
  append(expected, engineStarted());
  append(expected, {"oneShotBuffer Stop", "engineBuffer SetCurrentPosition 0", "engineBuffer Play 1"});
  const Lines told = withoutInput(rig.told(c4c));
  ASSERT_GT(told.size(), expected.size());
  EXPECT_EQ(Lines(told.begin(), told.begin() + static_cast<std::ptrdiff_t>(expected.size())), expected);
  // Revving moves the engine's tape and nothing else, until the shift.
  Lines shift(told.begin() + static_cast<std::ptrdiff_t>(expected.size()), told.end());
  std::erase_if(shift,
                [](const std::string& line) { return line.starts_with("engineBuffer SetCurrentPosition"); });
  Lines launched = {"sound19Buffer SetCurrentPosition 0", "purge", "oneShotBuffer release"};
  append(launched, loaded("vorn3.wav"));
  append(launched, {"sound19Buffer Play 0", "purge", "queue 1"});
  EXPECT_EQ(shift, launched);
}

TEST(CrashSequence, LastsAsLongAsItsSoundsIfNobodyIntervenes) {
  GameRig rig;
  wreck(rig);
  const std::int64_t start = rig.now();
  rig.plan({"wait " + std::to_string(kRestartMs + 1000), "press Escape"});
  c4c(rig.g);
  std::vector<std::int64_t> starts;
  for (const TraceLine& line : rig.trace().of("sound")) {
    if (line.at("buffer") == "oneShotBuffer" && line.at("op") == "Play") {
      starts.push_back(line.at("ms").get<std::int64_t>() - start);
    }
  }
  const std::int64_t sliding = kImpactMs + kForget;
  EXPECT_THAT(starts, ElementsAre(2 * kForget, sliding, sliding + 1000 + kForget,
                                  sliding + 2000 + 2 * kForget, sliding + 3000 + 3 * kForget));
}

TEST(CrashSequence, PutsTheCarBackInTheMiddleStandingInNeutral) {
  GameRig rig;
  wreck(rig);
  rig.g.lateralPosition = 100;
  rig.g.marblesTicks = 12;
  rig.g.wallTicks = 21;
  rig.g.speedMarkSaid.fill(1);
  rig.plan({"wait " + std::to_string(kRestartMs + 1000), "press Escape"});
  c4c(rig.g);
  EXPECT_EQ(rig.g.lateralPosition, 50);
  EXPECT_EQ(rig.g.speed, 0);
  EXPECT_EQ(rig.g.gear, 0);
  EXPECT_EQ(rig.g.marblesTicks, 0);
  EXPECT_EQ(rig.g.wallTicks, 0);
  EXPECT_EQ(rig.g.speedMarkSaid[1], 0);  // every mark is due again
  EXPECT_EQ(rig.g.lapPosition, 15000);
}

TEST(CrashSequence, CostsTwoHundredAndEightyNineTicks) {
  GameRig rig;
  wreck(rig);
  rig.plan({"wait 500", "tap A", "wait 500", "tap End", "wait 500", "tap LeftCtrl", "wait 1000", "tap Up"});
  c4c(rig.g);
  EXPECT_EQ(rig.g.raceTicks, 1289);
  EXPECT_EQ(rig.g.gear, 1);
}

TEST(CrashSequence, LaunchesTheCarThatIsOnTheGas) {
  GameRig rig;
  wreck(rig);
  rig.plan({"wait 500", "tap A", "wait 500", "tap End", "wait 500", "press LeftCtrl", "wait 1000", "tap Up"});
  c4c(rig.g);
  EXPECT_EQ(rig.g.engineRpm, 100);
  EXPECT_EQ(rig.g.speed, 24);
}

TEST(CrashSequence, LeavesTheCarStandingThatIsNotOnTheGas) {
  GameRig rig;
  wreck(rig);
  rig.plan({"wait 500", "tap A", "wait 500", "tap End", "wait 500", "tap LeftCtrl", "wait 1000", "tap Up"});
  c4c(rig.g);
  EXPECT_EQ(rig.g.speed, 0);
  EXPECT_EQ(rig.g.joyGasBrake, 0);
}

TEST(CrashSequence, ShiftsEvenIfTheShiftHadNotBeenReleased) {
  GameRig rig;
  wreck(rig);
  rig.g.upShiftHeld = 1;
  rig.plan({"wait 500", "tap A", "wait 500", "tap End", "wait 500", "tap LeftCtrl", "wait 1000", "tap Up"});
  c4c(rig.g);
  EXPECT_EQ(rig.g.gear, 1);
}

TEST(CrashSequence, TakesTheMasterVolumeIntoAccount) {
  GameRig rig;
  wreck(rig);
  rig.g.soundVolume = -500;
  rig.plan({"wait 500", "tap A", "wait 500", "tap End", "wait 500", "press Escape"});
  const Lines told = rig.told(c4c);
  EXPECT_THAT(told, Contains("warnBuffer SetVolume -2500"));
  EXPECT_THAT(told, Contains("oneShotBuffer SetVolume -1300"));
}

// Cutting the sounds short.

// What is loaded of a crash in which a key is pressed after so many milliseconds.
Lines loadedWithKeyAt(int milliseconds, const std::string& press = "tap A") {
  GameRig rig(press.starts_with("button") ? Wheel::kController : Wheel::kKeys);
  wreck(rig);
  rig.plan({"wait " + std::to_string(milliseconds), press, "wait 6000", "press Escape"});
  Lines files;
  for (const std::string& line : rig.toldTo("oneShotBuffer", c4c)) {
    if (line.starts_with("create ")) files.push_back(line.substr(7));
  }
  return files;
}

TEST(CrashSounds, AreCutShortByAKeyWhileTheWreckSlides) {
  EXPECT_THAT(loadedWithKeyAt(600), ElementsAre("vorn15.wav", "vorn11.wav"));
}

TEST(CrashSounds, AreCutShortByAKeyInTheFirstAdvice) {
  EXPECT_THAT(loadedWithKeyAt(1500), ElementsAre("vorn15.wav", "vorn11.wav", "vorn12.wav"));
}

TEST(CrashSounds, AreCutShortByAKeyInTheSecondAdvice) {
  EXPECT_THAT(loadedWithKeyAt(2500), ElementsAre("vorn15.wav", "vorn11.wav", "vorn12.wav", "vorn13.wav"));
}

TEST(CrashSounds, AreNotCutShortInTheLastAdvice) {
  EXPECT_THAT(loadedWithKeyAt(3500),
              ElementsAre("vorn15.wav", "vorn11.wav", "vorn12.wav", "vorn13.wav", "vorn14.wav"));
}

TEST(CrashSounds, AreNotCutShortByAKeyDuringTheImpact) {
  EXPECT_THAT(loadedWithKeyAt(100),
              ElementsAre("vorn15.wav", "vorn11.wav", "vorn12.wav", "vorn13.wav", "vorn14.wav"));
}

TEST(CrashSounds, AreCutShortByTheSpeedometerButton) {
  EXPECT_THAT(loadedWithKeyAt(600, "button 0 down"), ElementsAre("vorn15.wav", "vorn11.wav"));
  EXPECT_THAT(loadedWithKeyAt(1500, "button 0 down"), ElementsAre("vorn15.wav", "vorn11.wav", "vorn12.wav"));
}

TEST(CrashSounds, AreCutShortByTheSpeedometerKeyThatIsHeldDown) {
  GameRig rig;
  wreck(rig);
  rig.does("press RightShift");
  rig.plan({"wait 6000", "press Escape"});
  EXPECT_THAT(rig.toldTo("oneShotBuffer", c4c), Not(Contains("create vorn12.wav")));
}

TEST(CrashSounds, StopTheSlidingWreckAtAKey) {
  GameRig rig;
  wreck(rig);
  rig.plan({"wait 600", "tap A", "wait 6000", "press Escape"});
  const Lines told = rig.toldTo("oneShotBuffer", c4c);
  EXPECT_EQ(told.back(), "Stop");
}

// Starting again.

TEST(Restart, WaitsForTheStartControlForAsLongAsItTakes) {
  GameRig rig;
  wreck(rig);
  rig.plan({"wait 600", "tap A", "wait 60000", "press Escape"});
  const std::int64_t taken = rig.timed(c4c);
  EXPECT_GT(taken, 60600);
  EXPECT_EQ(rig.g.raceTicks, 1000);
}

TEST(Restart, EndsItsStartSoundAtTheGas) {
  GameRig rig;
  wreck(rig);
  rig.plan({"wait 600", "tap A", "wait 500", "tap End", "wait 500", "echo gas", "press LeftCtrl", "wait 500",
            "press Escape"});
  const Lines told = rig.told(c4c);
  const auto gas = std::find(told.begin(), told.end(), "echo gas");
  ASSERT_NE(gas, told.end());
  EXPECT_THAT(Lines(gas, gas + 5), ElementsAre("echo gas", "input key LeftCtrl 1", "oneShotBuffer Stop",
                                               "engineBuffer SetCurrentPosition 0", "engineBuffer Play 1"));
}

TEST(Restart, RunsTheEngineWhenItsStartSoundHasEnded) {
  GameRig rig;
  wreck(rig);
  rig.plan({"wait 600", "tap A", "wait 500", "press End", "wait 6000", "press Escape"});
  const Lines told = rig.told(c4c);
  std::int64_t started = 0, runs = 0;
  for (const TraceLine& line : rig.trace().of("sound")) {
    if (line.at("op") == "Play" && line.at("buffer") == "oneShotBuffer") started = line.at("ms");
    if (line.at("op") == "Play" && line.at("buffer") == "engineBuffer") runs = line.at("ms");
  }
  EXPECT_EQ(runs - started, 5000);
}

TEST(Restart, OnTheControllerTakesTheStartButtonThePedalAndTheShift) {
  GameRig rig(Wheel::kController);
  wreck(rig);
  rig.plan({"wait 600", "button 0 down", "wait 60", "button 0 up", "wait 500", "button 2 down", "wait 500",
            "button 2 up", "axis Y -1", "wait 500", "axis Y -5050", "wait 500", "button 8 down"});
  c4c(rig.g);
  EXPECT_EQ(rig.g.gear, 1);
  EXPECT_EQ(rig.g.engineRpm, 50);  // the whole part of 50.5
  EXPECT_EQ(rig.g.speed, 14);
  EXPECT_EQ(rig.g.raceTicks, 1289);
}

TEST(Restart, ReadsTheBrakePedalAsRevsToo) {
  GameRig rig(Wheel::kController);
  wreck(rig);
  rig.plan({"wait 600", "button 0 down", "wait 60", "button 0 up", "wait 500", "button 2 down", "wait 500",
            "button 2 up", "axis Y -100", "wait 100", "axis Y 3000", "wait 500", "button 8 down"});
  c4c(rig.g);
  EXPECT_EQ(rig.g.engineRpm, 30);
  EXPECT_EQ(rig.g.speed, 0);  // no gas, no launch
}

TEST(Restart, OnTheKeyboardLeavesTheGasInThePedalsField) {
  GameRig rig;
  wreck(rig);
  rig.plan({"wait 600", "tap A", "wait 500", "tap End", "wait 500", "press LeftCtrl", "wait 500", "tap Up"});
  c4c(rig.g);
  EXPECT_EQ(rig.g.joyGasBrake, -10000);
}

// Giving up.

struct GivingUp {
  const char* when;
  Lines before;  // statements that lead there
};

void PrintTo(const GivingUp& givingUp, std::ostream* out) {
  *out << givingUp.when;
}

class EscapeInACrash : public testing::TestWithParam<GivingUp> {};

TEST_P(EscapeInACrash, EndsItAndLeavesNothingThatStopallDoesNotSilence) {
  GameRig rig;
  wreck(rig);
  rig.plan(GetParam().before);
  rig.plan({"press Escape"});
  const std::int64_t taken = rig.timed(c4c);
  EXPECT_EQ(rig.g.escapePressed, 1);
  EXPECT_LT(taken, 10000);
  EXPECT_EQ(rig.g.raceTicks, 1000);
  stopall(rig.g);
  EXPECT_THAT(rig.sounding(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Steps, EscapeInACrash,
    testing::Values(GivingUp{"impact", {"wait 100"}}, GivingUp{"wreck sliding", {"wait 600"}},
                    GivingUp{"first advice", {"wait 1500"}}, GivingUp{"second advice", {"wait 2500"}},
                    GivingUp{"last advice", {"wait 3500"}},
                    GivingUp{"before the engine", {"wait " + std::to_string(kRestartMs + 500)}},
                    GivingUp{"starting", {"wait " + std::to_string(kRestartMs), "tap End", "wait 500"}},
                    GivingUp{"revving",
                             {"wait " + std::to_string(kRestartMs), "tap End", "wait 500", "press LeftCtrl",
                              "wait 700"}}),
    [](const auto& test) {
      std::string name = test.param.when;
      std::erase(name, ' ');
      return name;
    });

TEST(EscapeInACrash, IsNotFollowedByAnotherCrashInTheSameTick) {
  GameRig rig;
  putOnTrack(rig, 200, 4);
  rig.g.lateralPosition = 100;
  rig.g.wallTicks = 9;
  rig.plan({"wait 600", "press Escape"});
  const Lines told = rig.told(checkstuff);
  EXPECT_EQ(std::count(told.begin(), told.end(), "oneShotBuffer create vorn15.wav"), 1);
  EXPECT_THAT(told, Not(Contains("tick")));
  EXPECT_EQ(rig.g.raceTicks, 0);
}

TEST(EscapeInACrash, FromTheSteeringEndsTheTickToo) {
  GameRig rig;
  putOnTrack(rig, 200, 4);
  rig.g.lateralPosition = 100;
  rig.g.wallTicks = 8;  // the ninth contact opens the tick, the tenth is the steering's
  rig.plan({"wait 600", "press Escape"});
  const Lines told = rig.told(checkstuff);
  EXPECT_EQ(std::count(told.begin(), told.end(), "oneShotBuffer create vorn15.wav"), 1);
  EXPECT_THAT(told, Not(Contains("tick")));
}

TEST(CrashInATick, GoesOnWithTheTick) {
  GameRig rig;
  putOnTrack(rig, 200, 4);
  rig.g.lateralPosition = 100;
  rig.g.wallTicks = 9;
  rig.plan({"wait 600", "tap A", "wait 500", "tap End", "wait 500", "press LeftCtrl", "wait 1000", "tap Up"});
  EXPECT_THAT(rig.told(checkstuff), Contains("tick"));
  EXPECT_EQ(rig.g.raceTicks, 290);
  EXPECT_DOUBLE_EQ(rig.g.speed, 24 + 2.7);
  EXPECT_EQ(rig.g.lateralPosition, 50);
  EXPECT_THAT(rig.sounding(), Not(Contains("sound10Buffer")));
}

TEST(CrashInATick, FromTheSteeringSkipsTheMarbles) {
  GameRig rig;
  putOnTrack(rig, 200, 4);
  rig.g.lateralPosition = 100;
  rig.g.wallTicks = 8;
  rig.plan({"wait 600", "tap A", "wait 500", "tap End", "wait 500", "press LeftCtrl", "wait 1000", "tap Up"});
  tick(rig);
  EXPECT_EQ(rig.g.speed, 24);
  EXPECT_EQ(rig.g.marblesTicks, 0);
}

}  // namespace
}  // namespace vorn
