#include "race/steering.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

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

}  // namespace
}  // namespace vorn
