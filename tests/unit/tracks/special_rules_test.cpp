#include "tracks/special_rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tracks/catalogue.h"
#include "unit/pit/rig.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

TEST(UnlimitedTopGear, SetsItsFlag) {
  RaceState car;
  unlimitTopGear(car);
  EXPECT_EQ(car.topGearUnlimited, 1);
}

RaceState carInBankedTurn(double speed, double lateralPosition) {
  RaceState car;
  car.speed = speed;
  car.lateralPosition = lateralPosition;
  car.lapPosition = 1000;
  driveBankedTurn(car);
  return car;
}

TEST(BankedTurn, PushesLessTheHigherTheCar) {
  // speed / ((place + 0.8) / 2 + 40)
  EXPECT_NEAR(carInBankedTurn(60, 0).lateralPosition, 1.485149, 1e-6);
  EXPECT_NEAR(carInBankedTurn(180, 0).lateralPosition, 4.455446, 1e-6);
  EXPECT_NEAR(carInBankedTurn(228, 0).lateralPosition, 5.643564, 1e-6);
  EXPECT_NEAR(carInBankedTurn(60, 100).lateralPosition, 100.663717, 1e-6);
  EXPECT_NEAR(carInBankedTurn(180, 100).lateralPosition, 101.991150, 1e-6);
  EXPECT_NEAR(carInBankedTurn(228, 100).lateralPosition, 102.522124, 1e-6);
  EXPECT_NEAR(carInBankedTurn(180, 50).lateralPosition, 52.752294, 1e-6);
}

TEST(BankedTurn, IsLongerOnTheOutside) {
  EXPECT_NEAR(carInBankedTurn(180, 0).lapPosition, 1000 - 0.4455446, 1e-6);
  EXPECT_NEAR(carInBankedTurn(180, 100).lapPosition, 1000 - 10.199115, 1e-6);
}

TEST(BankedTurn, TakesAwayFromAStandingCarButPushesItNowhere) {
  const RaceState car = carInBankedTurn(0, 90);
  EXPECT_EQ(car.lateralPosition, 90);
  EXPECT_EQ(car.lapPosition, 991);
}

TEST(Flight, NeedsTheRamp) {
  EXPECT_EQ(flightOf(39.9, 110), Flight::kMissedRamp);
  EXPECT_EQ(flightOf(40, 110), Flight::kClean);
  EXPECT_EQ(flightOf(60, 110), Flight::kClean);
  EXPECT_EQ(flightOf(60.1, 110), Flight::kMissedRamp);
  EXPECT_EQ(flightOf(60.1, 10), Flight::kMissedRamp);
  EXPECT_EQ(flightOf(39.9, 200), Flight::kMissedRamp);
}

TEST(Flight, NeedsTheRightSpeed) {
  EXPECT_EQ(flightOf(50, 0), Flight::kTooSlow);
  EXPECT_EQ(flightOf(50, 98.9), Flight::kTooSlow);
  EXPECT_EQ(flightOf(50, 99), Flight::kClean);
  EXPECT_EQ(flightOf(50, 130.9), Flight::kClean);
  EXPECT_EQ(flightOf(50, 131), Flight::kTooFast);
  EXPECT_EQ(flightOf(50, 228), Flight::kTooFast);
}

/// A car at the end of the run to the swimming hole.
class SwimmingHole : public testing::Test {
 protected:
  Rig rig;
  GameState& g = rig.g;
  const Segment& run = kChesterland.segments[3];
  const Segment& landing = kChesterland.segments[4];

  SwimmingHole() {
    rig.platform.milliseconds = {{"vorn20", 200}, {"vorn7", 2590}, {"vorn21", 430}, {"vorn22", 2470},
                                 {"vorn15", 220}, {"vorn11", 700}, {"vorn12", 700}, {"vorn13", 1000},
                                 {"vorn14", 200}, {"vorn2", 4900}};
    g.gear = 3;
    g.lapPosition = 10040;
    g.lateralPosition = 50;
    g.warnDistance = 10000;
    g.warnScale = 20;
    g.engineBuffer->Play(SoundBuffer::kLooping);
    g.warnBuffer->Play(SoundBuffer::kLooping);
    rig.platform.clearLog();
  }

  std::vector<std::string> oneShots() const {
    std::vector<std::string> files;
    for (const std::string& line : rig.platform.logOf("oneShotBuffer create ")) {
      files.push_back(line.substr(line.rfind(' ') + 1));
    }
    return files;
  }

  /// Starts the engine and shifts up as soon as the marshals let the driver.
  void restartAtOnce() {
    rig.platform.onYield = [this] {
      g.btnStartEngine = 1;
      g.joyGasBrake = -10000;
      g.btnUpShift = g.gear == 0 ? 1 : 0;
    };
  }

  void jump(double speed, double lateralPosition = 50) {
    g.speed = speed;
    g.lateralPosition = lateralPosition;
    jumpSwimmingHole(g, run, landing);
  }

  void expectCleanJump(double speed) {
    EXPECT_THAT(oneShots(), ElementsAre("vorn20", "vorn7", "vorn21"));
    EXPECT_DOUBLE_EQ(g.lapPosition, 10040 + speed);
    EXPECT_DOUBLE_EQ(g.speed, speed - 75);
  }

  void expectInTheWater() {
    EXPECT_EQ(g.lapPosition, 10000);
    EXPECT_EQ(g.gear, 1);
    EXPECT_EQ(g.lateralPosition, 50);
    EXPECT_EQ(g.forceCrash, 0);
    EXPECT_GE(g.raceTicks, 289);
  }
};

TEST_F(SwimmingHole, IsJumpedAtExactly99) {
  jump(99);
  expectCleanJump(99);
}

TEST_F(SwimmingHole, IsJumpedJustBelow131) {
  jump(130.9, 40);
  expectCleanJump(130.9);
}

TEST_F(SwimmingHole, IsJumpedFromBothEdgesOfTheRamp) {
  jump(115, 60);
  expectCleanJump(115);
}

TEST_F(SwimmingHole, FlightLastsAsLongAsItsSound) {
  const std::int32_t start = rig.platform.now;
  jump(110);
  EXPECT_NEAR(rig.platform.now - start, 200 + 2590, 15);
  EXPECT_THAT(rig.platform.sounding(), Contains("warnBuffer looping"));  // the cue is heard in the air
  EXPECT_THAT(rig.platform.sounding(), Contains("oneShotBuffer"));       // the landing
}

TEST_F(SwimmingHole, SoundOfTheFlightIsStoppedBeforeTheLanding) {
  jump(110);
  EXPECT_THAT(rig.platform.logOf("oneShotBuffer"),
              testing::IsSupersetOf({"oneShotBuffer create vorn7", "oneShotBuffer create vorn21"}));
  const auto& log = rig.platform.log;
  const auto landed = std::find(log.begin(), log.end(), "oneShotBuffer create vorn21");
  EXPECT_EQ(*(landed - 2), "oneShotBuffer Stop");
  EXPECT_EQ(*(landed - 1), "oneShotBuffer release");
}

TEST_F(SwimmingHole, GearsCanBeShiftedInTheAirOncePerPress) {
  int pass = 0;
  rig.platform.onYield = [&] {
    ++pass;
    g.btnDownShift = pass > 400 && pass < 900 ? 1 : 0;  // held for half a second
  };
  jump(110);
  EXPECT_EQ(g.gear, 2);
  expectCleanJump(110);
}

TEST_F(SwimmingHole, GearsCanBeShiftedByKeyInTheAir) {
  g.inputDevice = kKeyboard;
  int pass = 0;
  rig.platform.onYield = [&] {
    ++pass;
    const bool isDown = (pass > 400 && pass < 500) || (pass > 600 && pass < 700);
    rig.platform.keys[g.keyMapDownShift] = isDown ? 128 : 0;
  };
  jump(110);
  EXPECT_EQ(g.gear, 1);  // two presses
}

TEST_F(SwimmingHole, TooSlowACarFallsShortWithASplash) {
  restartAtOnce();
  jump(98.9);
  EXPECT_THAT(oneShots(), testing::IsSupersetOf({"vorn20", "vorn7", "vorn22", "vorn15", "vorn2"}));
  EXPECT_THAT(oneShots(), Not(Contains("vorn21")));
  EXPECT_NEAR(
      rig.platform.timeOf("oneShotBuffer create vorn22") - rig.platform.timeOf("oneShotBuffer create vorn7"),
      1000, 10);
  expectInTheWater();
}

TEST_F(SwimmingHole, TooFastACarComesDownInTheWaterWithoutASplash) {
  restartAtOnce();
  jump(131);
  EXPECT_THAT(oneShots(), testing::IsSupersetOf({"vorn20", "vorn7", "vorn15", "vorn2"}));
  EXPECT_THAT(oneShots(), Not(Contains("vorn22")));
  EXPECT_THAT(oneShots(), Not(Contains("vorn21")));
  expectInTheWater();
}

TEST_F(SwimmingHole, BesideTheRampThereIsNoFlight) {
  for (const double beside : {39.9, 60.1}) {
    rig.platform.clearLog();
    restartAtOnce();
    g.raceTicks = 0;
    jump(115, beside);
    EXPECT_EQ(oneShots().front(), "vorn22");
    EXPECT_THAT(oneShots(), Not(Contains("vorn20")));
    expectInTheWater();
  }
}

TEST_F(SwimmingHole, EngineStopsWhileTheSplashRunsOn) {
  restartAtOnce();
  bool isHeard = true;
  const auto restart = rig.platform.onYield;
  rig.platform.onYield = [&] {
    restart();
    if (!rig.platform.logOf("oneShotBuffer create vorn15").empty()) return;
    if (rig.platform.now > 1000 + 250) isHeard = rig.platform.sounding().count("engineBuffer looping") != 0;
  };
  jump(50, 10);
  EXPECT_FALSE(isHeard);
}

TEST_F(SwimmingHole, CueOfTheLandingIsStartedBeforeTheCrash) {
  restartAtOnce();
  jump(50, 10);
  EXPECT_THAT(rig.platform.logOf("warnBuffer create"), ElementsAre("warnBuffer create vorn1t67"));
  EXPECT_EQ(g.warnDistance, 5000);
  EXPECT_EQ(g.warnScale, 20);
  EXPECT_EQ(g.warnPan, 3000);
  // Heard from 3000 units along it: 20 x (100 - 60) below full.
  EXPECT_THAT(rig.platform.log, Contains("warnBuffer SetVolume -800"));
}

struct Cut {
  const char* what;
  double speed, lateralPosition;
  const char* sound;  ///< the one-shot in which Escape is pressed
};

TEST_F(SwimmingHole, EscapeCutsItWhereverItIs) {
  for (const Cut& cut : {Cut{"on the ramp", 110, 50, "vorn20"},
                         {"in the clean jump", 110, 50, "vorn7"},
                         {"beyond the bank", 140, 50, "vorn7"},
                         {"falling short", 80, 50, "vorn7"},
                         {"splash", 80, 50, "vorn22"},
                         {"beside the ramp", 110, 10, "vorn22"}}) {
    g.escapePressed = 0;
    rig.platform.clearLog();
    std::int32_t pressed = -1;
    rig.platform.onYield = [&] {
      const std::int32_t begun = rig.platform.timeOf(std::string("oneShotBuffer create ") + cut.sound);
      if (begun < 0 || rig.platform.now < begun + 50 || pressed >= 0) return;
      pressed = rig.platform.now;
      g.escapePressed = 1;
      g.lastKeyCode = "27";
    };
    jump(cut.speed, cut.lateralPosition);
    ASSERT_GE(pressed, 0) << cut.what;
    EXPECT_LE(rig.platform.now - pressed, 200) << cut.what;
    EXPECT_EQ(rig.platform.sounding().count("oneShotBuffer"), 0u) << cut.what;
    EXPECT_THAT(oneShots(), Not(Contains("vorn15"))) << cut.what;
    EXPECT_EQ(g.raceTicks, 0) << cut.what;
  }
}

TEST_F(SwimmingHole, GivingUpInTheWaterReturnsAtOnce) {
  rig.platform.onYield = [this] {
    if (rig.platform.logOf("oneShotBuffer create vorn15").empty()) return;
    g.escapePressed = 1;
    g.lastKeyCode = "27";
  };
  jump(131);
  EXPECT_EQ(g.escapePressed, 1);
  EXPECT_EQ(g.raceTicks, 0);
  EXPECT_THAT(oneShots(), Not(Contains("vorn2")));
}

}  // namespace
}  // namespace vorn
