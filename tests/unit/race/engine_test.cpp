// The drive train at work: shifts, brake and the engine's tape.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "race/drive_train.h"
#include "unit/race/on_track.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Ge;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Le;
using testing::Not;

// Gears through ticks.

TEST(FullGas, ClimbsToTheCapOfFirstGearAndStays) {
  GameRig rig;
  putOnTrack(rig, 0, 1);
  rig.does("press LeftCtrl");
  for (int i = 1; i <= 28; ++i) EXPECT_NEAR(tick(rig).speed, 2.7 * i, 1e-9);
  EXPECT_EQ(tick(rig).speed, 78);
  EXPECT_EQ(tick(rig).speed, 78);
}

TEST(FullGas, OnTheControllerClimbsTheSame) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 0, 1);
  rig.does("axis Y -9700");
  for (int i = 1; i <= 28; ++i) EXPECT_NEAR(tick(rig).speed, 2.7 * i, 1e-9);
  EXPECT_EQ(tick(rig).speed, 78);
}

TEST(FullGas, StaysAtTheCapOfEachGear) {
  const double caps[] = {78, 128, 178, 228};
  GameRig rig;
  putOnTrack(rig, 0, 1);
  rig.does("press LeftCtrl");
  for (int gear = 1; gear <= 4; ++gear) {
    tick(rig, 40);
    EXPECT_EQ(rig.g.gear, gear);
    EXPECT_EQ(rig.g.speed, caps[gear - 1]);
    rig.does("tap Up");
    tick(rig);
  }
}

TEST(GasOnTheController, LittleOfItHoldsALittleSpeed) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 0, 1);
  rig.does("axis Y -500");  // a gas of 1: a target of 4
  EXPECT_DOUBLE_EQ(tick(rig).speed, 2.51);
  EXPECT_DOUBLE_EQ(tick(rig).speed, 5.02);
  EXPECT_DOUBLE_EQ(tick(rig).speed, 5.02 - 4.01);
}

TEST(Gas, DoesNothingWithoutFuel) {
  GameRig rig;
  putOnTrack(rig, 50, 1);
  rig.g.fuel = 0;
  rig.does("press LeftCtrl");
  EXPECT_EQ(tick(rig).speed, 46);
  EXPECT_EQ(tick(rig, 12).speed, 0);
}

TEST(LiftingOff, LosesTheCoastStepOfTheGear) {
  GameRig rig;
  putOnTrack(rig, 200, 4);
  EXPECT_DOUBLE_EQ(tick(rig).speed, 197.2);
  EXPECT_DOUBLE_EQ(tick(rig).speed, 194.4);
}

TEST(ShiftingDown, CoastsTowardTheLowerGear) {
  GameRig rig;
  putOnTrack(rig, 200, 4);
  rig.does("press LeftCtrl");
  rig.does("press Down");
  EXPECT_DOUBLE_EQ(tick(rig).speed, 200 - 3.4);  // target 180 at full gas in third: 3.2 + 0.2
}

// Shifts.

TEST(UpShiftControl, ShiftsOnceWhileItIsHeld) {
  GameRig rig;
  putOnTrack(rig, 50, 1);
  rig.does("press Up");
  EXPECT_EQ(tick(rig, 5).gear, 2);
  rig.does("release Up");
  tick(rig);
  rig.does("press Up");
  EXPECT_EQ(tick(rig, 5).gear, 3);
}

TEST(DownShiftControl, ShiftsOnceWhileItIsHeld) {
  GameRig rig;
  putOnTrack(rig, 50, 4);
  rig.does("press Down");
  EXPECT_EQ(tick(rig, 5).gear, 3);
  rig.does("release Down");
  tick(rig);
  rig.does("press Down");
  EXPECT_EQ(tick(rig, 5).gear, 2);
}

TEST(ShiftButtons, ShiftOnceWhileTheyAreHeld) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 50, 2);
  rig.does("button 8 down");
  EXPECT_EQ(tick(rig, 5).gear, 3);
  rig.does("button 8 up");
  rig.does("button 9 down");
  EXPECT_EQ(tick(rig, 5).gear, 2);
}

TEST(ShiftKeys, DoNothingInARaceOnTheController) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 50, 2);
  rig.does("press Up");
  EXPECT_EQ(tick(rig, 2).gear, 2);
}

TEST(UpShift, PlaysTheShiftAndSaysTheGear) {
  GameRig rig;
  putOnTrack(rig, 50, 2);
  EXPECT_THAT(rig.told(UpShift),
              ElementsAre("sound19Buffer SetCurrentPosition 0", "sound19Buffer Play 0", "purge", "queue 3"));
  EXPECT_EQ(rig.g.upShiftHeld, 1);
}

TEST(UpShift, YieldsOnce) {
  GameRig rig;
  putOnTrack(rig, 50, 2);
  EXPECT_EQ(rig.timed(UpShift), 1);
}

TEST(UpShift, DoesNothingUntilItsControlHasBeenReleased) {
  GameRig rig;
  putOnTrack(rig, 50, 2);
  rig.g.upShiftHeld = 1;
  EXPECT_THAT(rig.told(UpShift), IsEmpty());
  EXPECT_EQ(rig.g.gear, 2);
}

TEST(UpShift, IsSilentInFourthGear) {
  GameRig rig;
  putOnTrack(rig, 50, 4);
  EXPECT_THAT(rig.told(UpShift), ElementsAre("sound19Buffer SetCurrentPosition 0"));
  EXPECT_EQ(rig.g.gear, 4);
}

TEST(DownShift, PlaysTheShiftAndSaysTheGear) {
  GameRig rig;
  putOnTrack(rig, 50, 3);
  EXPECT_THAT(rig.told(DownShift),
              ElementsAre("sound19Buffer SetCurrentPosition 0", "sound19Buffer Play 0", "purge", "queue 2"));
}

TEST(DownShift, IsSilentInFirstGear) {
  GameRig rig;
  putOnTrack(rig, 50, 1);
  EXPECT_THAT(rig.told(DownShift), ElementsAre("sound19Buffer SetCurrentPosition 0"));
  EXPECT_EQ(rig.g.gear, 1);
}

TEST(DownShift, DoesNothingUntilItsControlHasBeenReleased) {
  GameRig rig;
  putOnTrack(rig, 50, 3);
  rig.g.downShiftHeld = 1;
  EXPECT_THAT(rig.told(DownShift), IsEmpty());
}

TEST(Shift, SaysNothingWithTheOptionOff) {
  GameRig rig;
  putOnTrack(rig, 50, 2);
  rig.g.autoGearAnnounce = kOff;
  EXPECT_THAT(rig.told(UpShift), ElementsAre("sound19Buffer SetCurrentPosition 0", "sound19Buffer Play 0"));
  EXPECT_THAT(rig.told(DownShift), ElementsAre("sound19Buffer SetCurrentPosition 0", "sound19Buffer Play 0"));
}

// Leaving neutral.

TEST(LeavingNeutral, WithGasLaunchesTheCar) {
  GameRig rig;
  putOnTrack(rig, 0, 0);
  rig.g.engineRpm = 100;
  rig.does("press LeftCtrl");
  rig.g.keyboardState = rig.g.keyboardDevice->GetDeviceStateKeyboard();
  EXPECT_THAT(rig.told(UpShift),
              ElementsAre("sound19Buffer SetCurrentPosition 0", "purge", "oneShotBuffer create vorn3.wav",
                          "oneShotBuffer SetCurrentPosition 0", "oneShotBuffer SetVolume 0",
                          "oneShotBuffer SetFrequency 22051", "oneShotBuffer Play 0", "sound19Buffer Play 0",
                          "purge", "queue 1"));
  EXPECT_EQ(rig.g.speed, 24);
  EXPECT_EQ(rig.g.gear, 1);
}

TEST(LeavingNeutral, WithoutGasOnlyShifts) {
  GameRig rig;
  putOnTrack(rig, 0, 0);
  rig.g.engineRpm = 100;
  EXPECT_THAT(rig.told(UpShift), ElementsAre("sound19Buffer SetCurrentPosition 0", "purge",
                                             "sound19Buffer Play 0", "purge", "queue 1"));
  EXPECT_EQ(rig.g.speed, 0);
}

TEST(LeavingNeutral, OnTheControllerTakesAPedalBeyondItsPlay) {
  for (const auto& [pedal, speed] :
       {std::pair{-10, 0.0}, {-11, 14.0}, {-10000, 14.0}, {0, 0.0}, {500, 0.0}}) {
    GameRig rig(Wheel::kController);
    putOnTrack(rig, 0, 0);
    rig.g.engineRpm = 50;
    rig.g.joyGasBrake = pedal;
    UpShift(rig.g);
    EXPECT_EQ(rig.g.speed, speed) << pedal;
  }
}

TEST(LeavingNeutral, OnTheControllerForgetsThePress) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 0, 0);
  rig.g.btnUpShift = 1;
  rig.g.joyGasBrake = -10000;
  UpShift(rig.g);
  EXPECT_EQ(rig.g.btnUpShift, 0);
}

TEST(LeavingNeutral, SilencesTheVoiceEvenWithTheGearOptionOff) {
  GameRig rig;
  putOnTrack(rig, 0, 0);
  rig.g.autoGearAnnounce = kOff;
  EXPECT_THAT(rig.spokenIn(UpShift), ElementsAre("purge"));
}

// Brake.

TEST(BrakeKey, TakesAMileOnTopOfTheCoasting) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.does("press LeftShift");
  EXPECT_DOUBLE_EQ(tick(rig).speed, 96.2);
  EXPECT_DOUBLE_EQ(tick(rig).speed, 92.4);
}

TEST(BrakePedal, TakesItsShareOfAMile) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 100, 4);
  rig.does("axis Y 10000");
  EXPECT_DOUBLE_EQ(tick(rig).speed, 96.2);
  rig.does("axis Y 2500");
  EXPECT_DOUBLE_EQ(tick(rig).speed, 96.2 - 2.8 - 0.25);
}

TEST(BrakePedal, IsAppliedFromItsFirstUnit) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 100, 4);
  rig.g.joyGasBrake = 1;
  EXPECT_THAT(rig.told(dobk), Contains("sound8Buffer Play 1"));
  EXPECT_DOUBLE_EQ(rig.g.speed, 99.9999);
  rig.g.joyGasBrake = 0;
  EXPECT_THAT(rig.told(dobk), ElementsAre("sound8Buffer Stop", "sound8Buffer SetCurrentPosition 0"));
}

TEST(Brake, NeverMakesTheCarRollBack) {
  GameRig rig;
  putOnTrack(rig, 0.4, 0);
  rig.does("press LeftShift");
  EXPECT_EQ(tick(rig).speed, 0);
}

TEST(Brake, OfAStandingCarIsSilent) {
  GameRig rig;
  putOnTrack(rig, 0, 1);
  rig.does("press LeftShift");
  EXPECT_THAT(rig.told(checkstuff), Not(Contains("sound8Buffer Play 1")));
}

TEST(Brake, PlaysTheStretchOfItsSpeed) {
  GameRig rig(Wheel::kController);
  const auto positionAt = [&](double speed) {
    putOnTrack(rig, speed, 4);
    rig.g.joyGasBrake = 10000;
    return rig.toldTo("sound8Buffer", dobk);
  };
  EXPECT_THAT(positionAt(101), ElementsAre("Play 1", "SetCurrentPosition 50380"));
  EXPECT_THAT(positionAt(229), ElementsAre("Play 1", "SetCurrentPosition 114848"));  // 114866.4
  EXPECT_THAT(positionAt(2.9), ElementsAre("Play 1", "SetCurrentPosition 1000"));    // 957.2
  EXPECT_THAT(positionAt(3), ElementsAre("Play 1", "SetCurrentPosition 1008"));      // 1007.6
}

TEST(Brake, LoopsUntilItIsReleasedAndIsRewound) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.does("press LeftShift");
  tick(rig, 3);
  EXPECT_THAT(rig.sounding(), Contains("sound8Buffer"));
  rig.does("release LeftShift");
  EXPECT_THAT(rig.toldTo("sound8Buffer", checkstuff), ElementsAre("Stop", "SetCurrentPosition 0"));
  EXPECT_THAT(rig.sounding(), Not(Contains("sound8Buffer")));
}

// Pitch.

struct PitchCase {
  int gear;
  double speed;
  int hertz;
};

class OverRev : public testing::TestWithParam<PitchCase> {};

TEST_P(OverRev, RaisesThePitchAboveTheGear) {
  GameRig rig;
  putOnTrack(rig, GetParam().speed, GetParam().gear);
  EXPECT_THAT(rig.told(overRev),
              ElementsAre("engineBuffer SetFrequency " + std::to_string(GetParam().hertz)));
}

INSTANTIATE_TEST_SUITE_P(Gears, OverRev,
                         testing::Values(PitchCase{0, 29, 22051}, PitchCase{0, 30, 22250},
                                         PitchCase{1, 78, 22051}, PitchCase{1, 79, 22051},
                                         PitchCase{1, 79.5, 22150}, PitchCase{1, 79.0025, 22050},
                                         PitchCase{1, 228, 51850}, PitchCase{2, 129, 22051},
                                         PitchCase{2, 130, 22250}, PitchCase{4, 231.7, 22590}));

// The engine's tape.

std::int64_t positionOf(GameRig& rig) {
  const auto told = rig.toldTo("engineBuffer", aprpms);
  if (told.empty()) return -1;
  EXPECT_EQ(told.size(), 1U);
  EXPECT_TRUE(told[0].starts_with("SetCurrentPosition "));
  return std::stoll(told[0].substr(19));
}

struct TapeCase {
  int engine, step, jitter;
};

class EngineTape : public testing::TestWithParam<TapeCase> {};

TEST_P(EngineTape, PlaysARandomStretchBeyondTheRevolutions) {
  const auto& [engine, step, jitter] = GetParam();
  GameRig rig;
  rig.g.engineSound = engine;
  rig.g.soundRpm = 50;
  std::set<std::int64_t> offsets;
  for (int i = 0; i < 20 * jitter; ++i) offsets.insert(positionOf(rig) - 50 * step);
  EXPECT_EQ(*offsets.begin(), 1);
  EXPECT_EQ(*offsets.rbegin(), jitter);
  EXPECT_EQ(offsets.size(), static_cast<std::size_t>(jitter));  // every whole number between
}

TEST_P(EngineTape, PlaysExactlyTheStretchOfLowRevolutions) {
  const auto& [engine, step, jitter] = GetParam();
  GameRig rig;
  rig.g.engineSound = engine;
  rig.g.soundRpm = 2;
  EXPECT_EQ(positionOf(rig), 2 * step);
}

INSTANTIATE_TEST_SUITE_P(Engines, EngineTape,
                         testing::Values(TapeCase{1, 2001, 525}, TapeCase{2, 2017, 525},
                                         TapeCase{3, 1010, 242}, TapeCase{4, 842, 222},
                                         TapeCase{5, 1675, 225}, TapeCase{6, 2444, 525}));

TEST(Aprpms, SkipsEveryThirdCallAtIdle) {
  GameRig rig;
  rig.g.soundRpm = 1;
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(positionOf(rig), 2001);
    EXPECT_EQ(positionOf(rig), 2001);
    EXPECT_EQ(positionOf(rig), -1);
  }
}

TEST(Aprpms, SkipsNothingFromTwoPercentOn) {
  GameRig rig;
  rig.g.soundRpm = 2;
  for (int i = 0; i < 6; ++i) EXPECT_EQ(positionOf(rig), 4002);
}

TEST(Aprpms, RoundsHalvesToEven) {
  GameRig rig;
  rig.g.soundRpm = 0.5;
  EXPECT_EQ(positionOf(rig), 1000);  // 1000.5
  rig.g.soundRpm = 1.5;
  EXPECT_EQ(positionOf(rig), 3002);  // 3001.5
}

TEST(Aprpms, PlaysTheBeginningOfAnEngineThatIsNone) {
  GameRig rig;
  rig.g.engineSound = 9;
  rig.g.soundRpm = 80;
  EXPECT_EQ(positionOf(rig), 0);
}

TEST(Aprpms, IsTheSameInEverySessionOfTheSameSeed) {
  GameRig first, second;
  first.g.soundRpm = second.g.soundRpm = 50;
  for (int i = 0; i < 20; ++i) EXPECT_EQ(positionOf(first), positionOf(second));
}

TEST(Prpm, FollowsTheSpeedInEachGear) {
  const double ranges[] = {75, 125, 175, 225};
  for (int gear = 1; gear <= 4; ++gear) {
    GameRig rig;
    putOnTrack(rig, 45, gear);
    prpm(rig.g);
    EXPECT_DOUBLE_EQ(rig.g.engineRpm, 4500 / ranges[gear - 1]);
    EXPECT_EQ(rig.g.soundRpm, rig.g.engineRpm);
  }
}

TEST(Prpm, EndsAtAHundredPercent) {
  GameRig rig;
  putOnTrack(rig, 78, 1);
  prpm(rig.g);
  EXPECT_EQ(rig.g.engineRpm, 100);
}

TEST(Prpm, KeepsTheRevolutionsOfNeutral) {
  GameRig rig;
  putOnTrack(rig, 30, 0);
  rig.g.engineRpm = 42;
  prpm(rig.g);
  EXPECT_EQ(rig.g.engineRpm, 42);
  rig.g.engineRpm = 101;
  prpm(rig.g);
  EXPECT_EQ(rig.g.engineRpm, 100);
}

TEST(PlayRPM, WaitsTwentyMilliseconds) {
  GameRig rig;
  EXPECT_EQ(rig.timed(PlayRPM), 21);
}

TEST(PlayRPM, ActsOnEverySecondCall) {
  GameRig rig;
  rig.g.engineRpm = 100;
  const auto soundAfterCall = [&] {
    PlayRPM(rig.g);
    return rig.g.soundRpm;
  };
  EXPECT_EQ(soundAfterCall(), 8);
  EXPECT_EQ(soundAfterCall(), 8);
  EXPECT_EQ(soundAfterCall(), 16);
  EXPECT_EQ(soundAfterCall(), 16);
}

TEST(PlayRPM, HuntsAroundItsAim) {
  GameRig rig;
  rig.g.engineRpm = 50;
  std::vector<double> heard;
  for (int i = 0; i < 40; ++i) {
    PlayRPM(rig.g);
    heard.push_back(rig.g.soundRpm);
  }
  EXPECT_EQ(*std::max_element(heard.begin(), heard.end()), 57);  // 7 beyond
  EXPECT_THAT(std::vector<double>(heard.begin() + 14, heard.end()),
              testing::Each(testing::AllOf(Ge(45), Le(58))));
}

TEST(PlayRPM, FallsToNothing) {
  GameRig rig;
  rig.g.soundRpm = 8;
  rig.g.engineRpm = 0;
  std::vector<double> heard;
  for (int i = 0; i < 6; ++i) {
    PlayRPM(rig.g);
    heard.push_back(rig.g.soundRpm);
  }
  EXPECT_THAT(heard, ElementsAre(3, 3, 0, 0, 0, 0));
}

// Fuel.

TEST(Fuel, OfATickAtFullRevolutionsIsATenthMore) {
  GameRig rig;
  putOnTrack(rig, 78, 1);
  rig.does("press LeftCtrl");
  tick(rig);
  EXPECT_DOUBLE_EQ(rig.g.fuel, 22 - 100 / 90000.0);
}

TEST(Fuel, OfATickAtHalfRevolutions) {
  GameRig rig;
  putOnTrack(rig, 116.1, 4);
  tick(rig);  // coasts to 113.3
  EXPECT_DOUBLE_EQ(rig.g.fuel, 22 - 113.3 * 100 / 225 / 100000.0);
}

TEST(Fuel, RunsOutAndLeavesTheCarStanding) {
  GameRig rig;
  putOnTrack(rig, 78, 1);
  rig.g.fuel = 0.0015;
  rig.does("press LeftCtrl");
  tick(rig, 2);
  EXPECT_EQ(rig.g.fuel, 0);
  EXPECT_EQ(rig.g.speed, 78);
  tick(rig, 20);
  EXPECT_EQ(rig.g.speed, 0);
  EXPECT_THAT(rig.sounding(), Not(Contains("engineBuffer")));
}

}  // namespace
}  // namespace vorn
