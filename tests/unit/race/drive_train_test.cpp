#include "race/drive_train.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

RaceState carAt(double speed, int gear) {
  RaceState car;
  car.speed = speed;
  car.gear = gear;
  return car;
}

double afterATick(double speed, int gear, int gas) {
  RaceState car = carAt(speed, gear);
  applyGas(car, gas);
  return car.speed;
}

TEST(GasOfAxis, FillsUpBeforeTheEndOfTheTravel) {
  EXPECT_EQ(gasOfAxis(0), 0);
  EXPECT_EQ(gasOfAxis(1), 0);
  EXPECT_EQ(gasOfAxis(10000), 0);
  EXPECT_EQ(gasOfAxis(-500), 1);
  EXPECT_EQ(gasOfAxis(-242), 0);
  EXPECT_EQ(gasOfAxis(-243), 1);  // 0.501
  EXPECT_EQ(gasOfAxis(-4850), 10);
  EXPECT_EQ(gasOfAxis(-9700), 20);
  EXPECT_EQ(gasOfAxis(-10000), 20);
}

TEST(TargetSpeed, RisesWithGasAndGear) {
  EXPECT_EQ(targetSpeed(20, 1), 80);
  EXPECT_EQ(targetSpeed(20, 2), 130);
  EXPECT_EQ(targetSpeed(20, 3), 180);
  EXPECT_EQ(targetSpeed(20, 4), 230);
  EXPECT_EQ(targetSpeed(1, 1), 4);
  EXPECT_EQ(targetSpeed(0, 4), 0);
}

TEST(ApplyGas, ClimbsByItsStepToTheCapOfTheGear) {
  const double steps[] = {0, 2.7, 2.4, 2.0, 1.7};
  const double caps[] = {0, 78, 128, 178, 228};
  for (int gear = 1; gear <= 4; ++gear) {
    EXPECT_DOUBLE_EQ(afterATick(10, gear, 20), 10 + steps[gear]) << gear;
    EXPECT_EQ(afterATick(caps[gear] - 0.1, gear, 20), caps[gear]) << gear;
    EXPECT_EQ(afterATick(caps[gear], gear, 20), caps[gear]) << gear;
  }
}

TEST(ApplyGas, FromStandingInFirstGearReachesTheCapAndStays) {
  RaceState car = carAt(0, 1);
  for (int tick = 1; tick <= 28; ++tick) {
    applyGas(car, 20);
    EXPECT_NEAR(car.speed, 2.7 * tick, 1e-9);
  }
  applyGas(car, 20);
  EXPECT_EQ(car.speed, 78);
  applyGas(car, 20);
  EXPECT_EQ(car.speed, 78);
}

TEST(ApplyGas, LiftingOffLosesTheGearsCoastStep) {
  const double coasts[] = {0, 4, 3.6, 3.2, 2.8};
  for (int gear = 1; gear <= 4; ++gear) EXPECT_DOUBLE_EQ(afterATick(60, gear, 0), 60 - coasts[gear]) << gear;
  EXPECT_EQ(afterATick(3, 1, 0), 0);
}

TEST(ApplyGas, PartGasSwingsAroundItsTarget) {
  EXPECT_DOUBLE_EQ(afterATick(39.9, 1, 10), 39.9 + 2.6);
  EXPECT_DOUBLE_EQ(afterATick(40, 1, 10), 40 - 4.1);
}

TEST(ApplyGas, NeutralChangesNothing) {
  EXPECT_EQ(afterATick(24, 0, 20), 24);
  EXPECT_EQ(afterATick(24, 0, 0), 24);
}

TEST(ApplyGas, AnUnlimitedTopGearPassesItsCapAndKeepsWhatItHas) {
  RaceState car = carAt(229.9, 4);
  car.topGearUnlimited = 1;
  applyGas(car, 20);
  EXPECT_DOUBLE_EQ(car.speed, 231.6);
  applyGas(car, 20);
  EXPECT_DOUBLE_EQ(car.speed, 231.6);
  applyGas(car, 19);
  EXPECT_DOUBLE_EQ(car.speed, 231.6 - 2.99);
  RaceState third = carAt(177, 3);
  third.topGearUnlimited = 1;
  applyGas(third, 20);
  EXPECT_EQ(third.speed, 178);
}

TEST(BurnFuel, TakesMoreAtHighRevolutions) {
  RaceState car;
  car.fuel = 22;
  car.engineRpm = 85;
  burnFuel(car);
  EXPECT_DOUBLE_EQ(car.fuel, 22 - 85 / 100000.0);
  car.fuel = 22;
  car.engineRpm = 100;
  burnFuel(car);
  EXPECT_DOUBLE_EQ(car.fuel, 22 - 100 / 90000.0);
  car.fuel = 0.0005;
  burnFuel(car);
  EXPECT_EQ(car.fuel, 0);
  car.fuel = 22;
  car.engineRpm = 0;
  burnFuel(car);
  EXPECT_EQ(car.fuel, 22);
}

}  // namespace
}  // namespace vorn
