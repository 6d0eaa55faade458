#include "codriver/warnings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TickReport drivingAt(double speed) {
  TickReport tick{};
  tick.speed = speed;
  tick.gear = 4;
  tick.segment = 1;
  tick.fuel = kFullTank;
  return tick;
}

TEST(Gear, IsUsedUpBelowTheTopOnly) {
  TickReport tick = drivingAt(80);
  tick.gear = 1;
  tick.engineRpm = 100;
  EXPECT_TRUE(isGearUsedUp(tick));
  tick.engineRpm = 99.9;
  EXPECT_FALSE(isGearUsedUp(tick));
  tick.engineRpm = 100;
  for (const int gear : {0, 4}) {
    tick.gear = gear;
    EXPECT_FALSE(isGearUsedUp(tick)) << gear;
  }
}

class Told : public testing::Test {
 protected:
  std::vector<std::string> after(const TickReport& report, double lapsToRun = 20) {
    return warnings.after(report, lapsToRun, 1000, 0);
  }
  Warnings warnings;
  TickReport tick = drivingAt(200);
};

TEST_F(Told, ContactsFromTheFifthOn) {
  tick.wallTicks = 4;
  EXPECT_THAT(after(tick), IsEmpty());
  tick.wallTicks = 5;
  EXPECT_THAT(after(tick), ElementsAre(" 5 of 10 wall contacts. "));
  EXPECT_THAT(after(tick), IsEmpty());
  tick.wallTicks = 7;
  EXPECT_THAT(after(tick), ElementsAre(" 7 of 10 wall contacts. "));
  tick.wallTicks = 10;
  EXPECT_THAT(after(tick), IsEmpty());  // a crash, or softened by the marbles
}

TEST_F(Told, ContactsAnewAfterACrash) {
  tick.wallTicks = 6;
  after(tick);
  tick.wallTicks = 0;
  after(tick);
  tick.wallTicks = 5;
  EXPECT_THAT(after(tick), ElementsAre(" 5 of 10 wall contacts. "));
}

TEST_F(Told, FuelForTwoLapsAtWhatALapHasTaken) {
  tick.lapsCompleted = 4;
  tick.fuel = kFullTank - 4 * 3.6;  // 7.6 left, 3.6 a lap: a little more than two
  EXPECT_THAT(after(tick), IsEmpty());
  tick.fuel = kFullTank - 4 * 3.7;  // 7.2 left, 3.7 a lap
  EXPECT_THAT(after(tick), ElementsAre(" Fuel for two more laps. "));
  EXPECT_THAT(after(tick), IsEmpty());
}

TEST_F(Told, NothingOfFuelThatLastsToTheFlag) {
  tick.lapsCompleted = 4;
  tick.fuel = kFullTank - 4 * 3.7;
  EXPECT_THAT(after(tick, 6), IsEmpty());
}

TEST_F(Told, FuelAgainAfterAStop) {
  tick.lapsCompleted = 4;
  tick.fuel = kFullTank - 4 * 4;
  EXPECT_THAT(after(tick), ElementsAre(" Fuel for two more laps. "));
  tick.fuel = kFullTank;
  EXPECT_THAT(after(tick), IsEmpty());
  tick.lapsCompleted = 8;
  tick.fuel = kFullTank - 4 * 4;
  EXPECT_THAT(after(tick), ElementsAre(" Fuel for two more laps. "));
}

TEST_F(Told, AnEmptyTankOnce) {
  tick.lapsCompleted = 30;
  tick.fuel = 0;
  EXPECT_THAT(after(tick, 31), ElementsAre(" The tank is empty. "));
  EXPECT_THAT(after(tick, 31), IsEmpty());
}

TEST(PitRoad, OpensAndClosesAtTheStartOfALap) {
  PitWatch pits;
  TickReport tick = drivingAt(150);
  tick.lapPosition = 150;
  EXPECT_EQ(pits.after(tick), PitSignal::kOpens);
  tick.lapPosition = 2500;
  EXPECT_EQ(pits.after(tick), PitSignal::kNone);
  tick.lapPosition = 2501;
  EXPECT_EQ(pits.after(tick), PitSignal::kCloses);
  tick.segment = 2;
  tick.lapPosition = 100;
  EXPECT_EQ(pits.after(tick), PitSignal::kNone);
}

TEST(PitRoad, TellsOfItsSpeedLimit) {
  PitWatch pits;
  TickReport tick = drivingAt(65);
  tick.pit = 1;
  tick.segment = 0;
  EXPECT_EQ(pits.after(tick), PitSignal::kNone);
  tick.speed = 65.1;
  EXPECT_EQ(pits.after(tick), PitSignal::kTooFast);
  EXPECT_EQ(pits.after(tick), PitSignal::kNone);
  tick.speed = 64;
  EXPECT_EQ(pits.after(tick), PitSignal::kSlowEnough);
}

TEST(PitFigures, AreToldApart) {
  const auto opens = pitFigure(PitSignal::kOpens), closes = pitFigure(PitSignal::kCloses);
  EXPECT_LT(opens[0].tone.pitch, opens[1].tone.pitch);
  EXPECT_GT(closes[0].tone.pitch, closes[1].tone.pitch);
  EXPECT_EQ(pitFigure(PitSignal::kTooFast).size(), 3U);
  EXPECT_THAT(pitFigure(PitSignal::kNone), IsEmpty());
}

}  // namespace
}  // namespace vorn
