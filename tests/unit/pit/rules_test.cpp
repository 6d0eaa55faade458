#include "pit/rules.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

constexpr const char* kPassing = " 10 second penalty for passing your pit box. ";
constexpr const char* kShort = " 10 second penalty for stopping short of your pit box. ";
constexpr const char* kOutside = " 10 second penalty for stopping outside of your pit box. ";

PitVerdict judgeLeft(double lapPosition, double lateralPosition, std::optional<double> speeding = {}) {
  return judge({lapPosition, lateralPosition, speeding}, pitSide(1));
}

PitVerdict judgeRight(double lapPosition, double lateralPosition) {
  return judge({lapPosition, lateralPosition, {}}, pitSide(2));
}

void expectClean(const PitVerdict& verdict) {
  EXPECT_EQ(verdict.message, "");
  EXPECT_EQ(verdict.ticks, 0);
}

void expectFault(const PitVerdict& verdict, const std::string& message, double ticks) {
  EXPECT_EQ(verdict.message, message);
  EXPECT_EQ(verdict.ticks, ticks);
}

TEST(LanePlace, BeginsAtThePitWall) {
  EXPECT_EQ(lanePlace(pitSide(1), 0), 5);
  EXPECT_EQ(lanePlace(pitSide(1), 600), 25);
  EXPECT_DOUBLE_EQ(lanePlace(pitSide(1), 2500), 88 + 1.0 / 3);
  EXPECT_EQ(lanePlace(pitSide(2), 0), 95);
  EXPECT_EQ(lanePlace(pitSide(2), 600), 75);
  EXPECT_DOUBLE_EQ(lanePlace(pitSide(2), 2500), 11 + 2.0 / 3);
}

double driftAt(int side, double speed, double lapPosition) {
  RaceState car;
  car.speed = speed;
  car.lapPosition = lapPosition;
  car.lateralPosition = 50;
  driftInLane(car, pitSide(side));
  return car.lateralPosition - 50;
}

TEST(DriftInLane, GrowsAlongTheLane) {
  EXPECT_NEAR(driftAt(1, 70, 0), 2.2, 1e-12);
  EXPECT_NEAR(driftAt(1, 70, 1750), 0.2 + 70.0 / 30, 1e-12);
  EXPECT_NEAR(driftAt(1, 50, 4480), 0.2 + 50 / 22.2, 1e-12);
  EXPECT_NEAR(driftAt(1, 0.5, 0), 0.2142857, 1e-7);
}

TEST(DriftInLane, IsMirroredOnTheOtherSide) {
  for (const double place : {0.0, 1000.0, 4499.0}) {
    EXPECT_NEAR(driftAt(2, 50, place), -driftAt(1, 50, place), 1e-12);
  }
}

TEST(DriftInLane, LeavesAStandingCar) {
  EXPECT_EQ(driftAt(1, 0, 1000), 0);
}

TEST(BoxVoiceFrequency, FollowsTheCarUpToACap) {
  EXPECT_EQ(boxVoiceFrequency(0), 8000);
  EXPECT_EQ(boxVoiceFrequency(50), 22050);
  EXPECT_EQ(boxVoiceFrequency(142), 47902);
  EXPECT_EQ(boxVoiceFrequency(143), 48000);
  EXPECT_EQ(boxVoiceFrequency(228), 48000);
}

TEST(IsSpeeding, IsStrictlyAbove65) {
  EXPECT_FALSE(isSpeeding(50));
  EXPECT_FALSE(isSpeeding(65));
  EXPECT_TRUE(isSpeeding(65.0000001));
  EXPECT_TRUE(isSpeeding(65.1));
}

TEST(Judge, FindsNothingInAStopInTheBox) {
  expectClean(judgeLeft(3000, 10));
  expectClean(judgeRight(3000, 90));
}

TEST(Judge, HoldsBothEndsOfTheBoxForIn) {
  expectClean(judgeLeft(3500, 10));
  expectClean(judgeLeft(2500, 10));
  expectFault(judgeLeft(3500.01, 10), kPassing, 100);
  expectFault(judgeLeft(2499.99, 10), kShort, 100);
}

TEST(Judge, HoldsTheEdgeOfTheBoxForIn) {
  expectClean(judgeLeft(3000, 20));
  expectFault(judgeLeft(3000, 20.1), kOutside, 100);
  expectClean(judgeLeft(3000, 0));
  expectClean(judgeRight(3000, 80));
  expectFault(judgeRight(3000, 79.9), kOutside, 100);
  expectClean(judgeRight(3000, 100));
}

TEST(Judge, SaysTheSpeedToOneDecimal) {
  expectFault(judgeLeft(3000, 10, 65.1), " 30 second penalty for speeding 65.1 miles an hour. ", 300);
  expectFault(judgeLeft(3000, 10, 65.04), " 30 second penalty for speeding 65 miles an hour. ", 300);
  expectFault(judgeLeft(3000, 10, 127.96), " 30 second penalty for speeding 128 miles an hour. ", 300);
}

TEST(Judge, JoinsAllFaultsInOneText) {
  const std::string speeding = " 30 second penalty for speeding 90 miles an hour. ";
  expectFault(judgeLeft(4750, 50, 90), speeding + kPassing + kOutside, 500);
  expectFault(judgeLeft(0, 50, 90), speeding + kShort + kOutside, 500);
  expectFault(judgeLeft(100, 60), std::string(kShort) + kOutside, 200);
}

}  // namespace
}  // namespace vorn
