#include "race/steering.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "unit/race/on_track.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(LateralStep, IsAFifteenHundredthOfTheReading) {
  EXPECT_EQ(lateralStep(10000), 6.67);
  EXPECT_EQ(lateralStep(-10000), -6.67);
  EXPECT_EQ(lateralStep(1500), 1);
  EXPECT_EQ(lateralStep(1), 0);
  EXPECT_EQ(lateralStep(7), 0);
  EXPECT_EQ(lateralStep(8), 0.01);
  EXPECT_EQ(lateralStep(200), 0.13);
}

TEST(SteeringLoss, GrowsWithSpeedAndLock) {
  EXPECT_DOUBLE_EQ(steeringLoss(171, 7500), 0.5 + 0.5);
  EXPECT_DOUBLE_EQ(steeringLoss(0, -15000), 1);
}

// One step of steering, nothing else of the tick.
void step(GameRig& rig) {
  readKeyboard(rig.g);
  SteerIt(rig.g);
}

std::vector<std::string> tyresIn(GameRig& rig) {
  return rig.toldTo("sound9Buffer", [&](GameState&) { step(rig); });
}

// The wheel.

TEST(Wheel, AtFullLockMovesTheCarAndSlowsIt) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 171, 4);
  rig.g.joySteering = 10000;
  step(rig);
  EXPECT_DOUBLE_EQ(rig.g.lateralPosition, 56.67);
  EXPECT_DOUBLE_EQ(rig.g.speed, 171 - 1.84 * (0.5 + 10000 / 15000.0));
}

TEST(Wheel, MovesTheCarToTheLeftAsWell) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 171, 4);
  rig.g.joySteering = -3000;
  step(rig);
  EXPECT_EQ(rig.g.lateralPosition, 48);
  EXPECT_DOUBLE_EQ(rig.g.speed, 171 - 1.84 * 0.7);
}

TEST(Wheel, SlowsTheCarByTheTracksFactor) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 171, 4);
  rig.g.steerDrag = 0.5;
  rig.g.joySteering = 7500;
  step(rig);
  EXPECT_EQ(rig.g.speed, 170.5);
}

TEST(Wheel, OfOneUnitMovesNothingButIsHeard) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 171, 4);
  rig.g.joySteering = 1;
  EXPECT_THAT(tyresIn(rig), ElementsAre("SetPan -400", "SetVolume -900"));  // 0.50007 x 800 - 1300
  EXPECT_EQ(rig.g.lateralPosition, 50);
}

TEST(Wheel, DoesNothingToAStandingCar) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 0, 1);
  rig.g.joySteering = 10000;
  EXPECT_THAT(tyresIn(rig), ElementsAre("SetVolume -6500"));
  EXPECT_EQ(rig.g.lateralPosition, 50);
}

TEST(Wheel, CentredSilencesTheTyres) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 171, 4);
  rig.g.joySteering = 0;
  EXPECT_THAT(tyresIn(rig), ElementsAre("SetVolume -6500"));
  EXPECT_EQ(rig.g.speed, 171);
}

TEST(Wheel, IsNotOverruledByTheSteeringKeys) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 171, 4);
  rig.g.joySteering = 1500;
  rig.does("press Left");
  step(rig);
  EXPECT_EQ(rig.g.lateralPosition, 51);
  EXPECT_EQ(rig.g.steerKeyTicks, 0);
}

TEST(Wheel, NeverTakesMoreSpeedThanThereIs) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 0.5, 1);
  rig.g.joySteering = 10000;
  step(rig);
  EXPECT_EQ(rig.g.speed, 0);
}

// The keys.

TEST(SteeringKeys, BuildUpToFullLockInFiftyTicks) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.g.steerDrag = 0;
  rig.does("press Right");
  for (int i = 1; i <= 50; ++i) {
    rig.g.lateralPosition = 50;
    step(rig);
    EXPECT_EQ(rig.g.joySteering, 200 * i);
    EXPECT_EQ(rig.g.steerKeyTicks, i);
  }
  EXPECT_DOUBLE_EQ(rig.g.lateralPosition, 56.67);
  step(rig);
  EXPECT_EQ(rig.g.steerKeyRight, 10000);
  EXPECT_EQ(rig.g.joySteering, 10000);
}

TEST(SteeringKeys, BuildUpToTheLeftAsWell) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.g.steerKeyLeft = -9900;
  rig.does("press Left");
  step(rig);
  EXPECT_EQ(rig.g.steerKeyLeft, -10000);
  EXPECT_EQ(rig.g.joySteering, -10000);
  EXPECT_DOUBLE_EQ(rig.g.lateralPosition, 43.33);
}

TEST(SteeringKeys, BothAtOnceCentreTheWheel) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.does("press Right");
  for (int i = 0; i < 5; ++i) step(rig);
  const double place = rig.g.lateralPosition;
  rig.does("press Left");
  step(rig);
  EXPECT_EQ(rig.g.joySteering, 0);
  EXPECT_EQ(rig.g.steerKeyRight, 0);
  EXPECT_EQ(rig.g.steerKeyLeft, 0);
  EXPECT_EQ(rig.g.lateralPosition, place);
  EXPECT_EQ(rig.g.steerKeyTicks, 6);
}

TEST(SteeringKeys, ChangedOverStartTheOtherSideAnew) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.does("press Right");
  for (int i = 0; i < 5; ++i) step(rig);
  rig.does("release Right");
  rig.does("press Left");
  step(rig);
  EXPECT_EQ(rig.g.steerKeyRight, 0);
  EXPECT_EQ(rig.g.joySteering, -200);
}

TEST(SteeringKeys, ReleasedCountTheirTicksAnewAndKeepTheirBuildUp) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.does("press Right");
  for (int i = 0; i < 5; ++i) step(rig);
  rig.does("release Right");
  EXPECT_THAT(tyresIn(rig), ElementsAre("SetVolume -6500"));
  EXPECT_EQ(rig.g.steerKeyTicks, 0);
  EXPECT_EQ(rig.g.steerKeyRight, 1000);
  EXPECT_EQ(rig.g.joySteering, 1000);
  rig.does("press Right");
  step(rig);
  EXPECT_EQ(rig.g.joySteering, 1200);
  EXPECT_EQ(rig.g.steerKeyTicks, 1);
}

TEST(SteeringKeys, CostHalfAsMuchAgainInTheFirstThreeTicks) {
  GameRig rig;
  putOnTrack(rig, 171, 4);
  rig.does("press Right");
  for (int i = 1; i <= 5; ++i) {
    rig.g.speed = 171;
    step(rig);
    const double loss = 1.84 * (0.5 + 200 * i / 15000.0);
    EXPECT_NEAR(rig.g.speed, 171 - (i < 4 ? 1.5 : 1) * loss, 1e-9) << i;
  }
}

TEST(SteeringKeys, DoNothingToAStandingCar) {
  GameRig rig;
  putOnTrack(rig, 0, 1);
  rig.g.steerKeyTicks = 7;
  rig.does("press Right");
  EXPECT_THAT(tyresIn(rig), ElementsAre("SetVolume -6500"));
  EXPECT_EQ(rig.g.steerKeyTicks, 0);
  EXPECT_EQ(rig.g.lateralPosition, 50);
}

// The tyres.

TEST(Tyres, SoundFromTheSideTheyAreSteeredAwayFrom) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 171, 4);
  rig.g.joySteering = -7500;
  EXPECT_THAT(tyresIn(rig), ElementsAre("SetPan 400", "SetVolume -500"));
  rig.g.speed = 171;
  rig.g.joySteering = 7500;
  EXPECT_THAT(tyresIn(rig), ElementsAre("SetPan -400", "SetVolume -500"));
}

TEST(Tyres, AreLoweredByTheMasterVolume) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 171, 4);
  rig.g.soundVolume = -3500;
  rig.g.joySteering = 7500;
  EXPECT_THAT(tyresIn(rig), ElementsAre("SetPan -400", "SetVolume -4000"));
}

TEST(Tyres, AreNeverLouderThanRecorded) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 400, 4);
  rig.g.joySteering = 10000;
  EXPECT_THAT(tyresIn(rig), ElementsAre("SetPan -400", "SetVolume 0"));
}

// The marbles.

struct MarblesCase {
  double lateralPosition;
  int pan;
};

class InTheMarbles : public testing::TestWithParam<MarblesCase> {};

TEST_P(InTheMarbles, TheCarBumpsAndSlows) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.g.soundVolume = -300;
  rig.g.lateralPosition = GetParam().lateralPosition;
  EXPECT_THAT(rig.toldTo("sound18Buffer", [&](GameState&) { step(rig); }),
              ElementsAre("SetPan " + std::to_string(GetParam().pan), "SetVolume -400",
                          "SetFrequency 14174"));  // 98 x 63 + 8000
  EXPECT_EQ(rig.g.speed, 98);
  EXPECT_EQ(rig.g.marblesTicks, 1);
}

INSTANTIATE_TEST_SUITE_P(Places, InTheMarbles,
                         testing::Values(MarblesCase{3.99, -80}, MarblesCase{2, -40}, MarblesCase{0.5, -10},
                                         MarblesCase{96.01, 80}, MarblesCase{98, 40}, MarblesCase{99.5, 10}));

class InTheGroove : public testing::TestWithParam<double> {};

TEST_P(InTheGroove, TheCarRunsFree) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.g.marblesTicks = 8;
  rig.g.lateralPosition = GetParam();
  EXPECT_THAT(rig.toldTo("sound18Buffer", [&](GameState&) { step(rig); }), ElementsAre("SetVolume -6500"));
  EXPECT_EQ(rig.g.speed, 100);
  EXPECT_EQ(rig.g.marblesTicks, 0);
}

INSTANTIATE_TEST_SUITE_P(Places, InTheGroove, testing::Values(4, 4.01, 50, 95.99, 96));

TEST(Marbles, CountTheTicksSpentInThem) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.g.lateralPosition = 2;
  for (int i = 1; i <= 5; ++i) {
    step(rig);
    EXPECT_EQ(rig.g.marblesTicks, i);
  }
}

TEST(Marbles, StopTheCarAtMost) {
  GameRig rig;
  putOnTrack(rig, 1, 1);
  rig.g.lateralPosition = 2;
  EXPECT_EQ(rig.toldTo("sound18Buffer", [&](GameState&) { step(rig); }).back(), "SetFrequency 8000");
  EXPECT_EQ(rig.g.speed, 0);
}

TEST(Marbles, CountForASteeredCarToo) {
  GameRig rig(Wheel::kController);
  putOnTrack(rig, 171, 4);
  rig.g.lateralPosition = 95;
  rig.g.joySteering = 3000;
  step(rig);
  EXPECT_EQ(rig.g.lateralPosition, 97);
  EXPECT_EQ(rig.g.marblesTicks, 1);
  EXPECT_DOUBLE_EQ(rig.g.speed, 171 - 1.84 * 0.7 - 2);
}

TEST(SteerIt, TakesNoTime) {
  GameRig rig;
  putOnTrack(rig, 100, 4);
  rig.g.lateralPosition = 2;
  EXPECT_EQ(rig.timed([&](GameState&) { step(rig); }), 0);
}

}  // namespace
}  // namespace vorn
