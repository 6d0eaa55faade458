#include "platform/common/axis_law.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(AxisLaw, SpreadsTheTravelOverTheRange) {
  const AxisLaw law;
  EXPECT_EQ(axisReading(-1, law), -10000);
  EXPECT_EQ(axisReading(-0.25, law), -2500);
  EXPECT_EQ(axisReading(0, law), 0);
  EXPECT_EQ(axisReading(0.00005, law), 1);
  EXPECT_EQ(axisReading(1, law), 10000);
  EXPECT_EQ(axisReading(-32768 / 32767.0, law), -10000);
}

TEST(AxisLaw, InTheDeadZoneItReadsTheMiddleAndBehindItRisesFromThere) {
  const AxisLaw law{.deadZone = 800};
  EXPECT_EQ(axisReading(0.08, law), 0);
  EXPECT_EQ(axisReading(-0.08, law), 0);
  EXPECT_EQ(axisReading(0.0801, law), 1);
  EXPECT_EQ(axisReading(0.54, law), 5000);
  EXPECT_EQ(axisReading(-0.54, law), -5000);
  EXPECT_EQ(axisReading(1, law), 10000);
}

TEST(AxisLaw, BehindTheSaturationItReadsTheEnd) {
  const AxisLaw law{.saturation = 5000};
  EXPECT_EQ(axisReading(0.25, law), 5000);
  EXPECT_EQ(axisReading(0.5, law), 10000);
  EXPECT_EQ(axisReading(-0.7, law), -10000);
}

TEST(AxisLaw, ARangeNeedNotBeEven) {
  const AxisLaw law{.low = 0, .high = 1000, .deadZone = 1000};
  EXPECT_EQ(axisReading(-1, law), 0);
  EXPECT_EQ(axisReading(0.05, law), 500);
  EXPECT_EQ(axisReading(1, law), 1000);
}

TEST(AxisLaw, ADeadZoneOfEverythingLeavesTheEnds) {
  const AxisLaw law{.deadZone = 10000};
  EXPECT_EQ(axisReading(0.99, law), 0);
}

}  // namespace
}  // namespace vorn
