#include <gtest/gtest.h>

#include <limits>

#include "clock/waits.h"

namespace vorn {
namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();

TEST(Elapsedtime, IsThePlainDifference) {
  EXPECT_EQ(elapsedtime(1000, 1099), 99);
  EXPECT_EQ(elapsedtime(-500, -400), 100);
  EXPECT_EQ(elapsedtime(-500, 400), 900);
  EXPECT_EQ(elapsedtime(0, 0), 0);
}

TEST(Elapsedtime, IsRightAcrossTheWrap) {
  EXPECT_EQ(elapsedtime(kLargest, kSmallest), 1);
  EXPECT_EQ(elapsedtime(kLargest - 49, kSmallest + 50), 100);
  EXPECT_EQ(elapsedtime(1, kSmallest), kLargest);
}

TEST(Elapsedtime, FailsWhereTheDifferenceDoesNotFit) {
  EXPECT_THROW(elapsedtime(kSmallest, kLargest), PlatformError);
  EXPECT_THROW(elapsedtime(1, -1), PlatformError);  // 2^32 - 2 ms
}

TEST(Elapsedtime, FromZeroToANegativeCountIsNegative) {
  EXPECT_EQ(elapsedtime(0, -5), -5);
}

}  // namespace
}  // namespace vorn
