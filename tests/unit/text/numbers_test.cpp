#include "text/numbers.h"

#include <gtest/gtest.h>

#include <climits>

namespace vorn {
namespace {

TEST(RoundEven, TakesHalvesToTheEvenSide) {
  EXPECT_EQ(roundToInt(2.5), 2);
  EXPECT_EQ(roundToInt(3.5), 4);
  EXPECT_EQ(roundToInt(-2.5), -2);
  EXPECT_EQ(roundToInt(2.51), 3);
  EXPECT_EQ(roundDecimals(0.125, 2), 0.12);
  EXPECT_EQ(roundDecimals(0.375, 2), 0.38);
}

TEST(WholePart, IsTheLargestWholeNumberNotAbove) {
  EXPECT_EQ(wholePart(2.99), 2);
  EXPECT_EQ(wholePart(-0.5), -1);
}

TEST(NumberText, HasNoTrailingZerosAndNoNoise) {
  EXPECT_EQ(numberText(0), "0");
  EXPECT_EQ(numberText(-0.0), "0");
  EXPECT_EQ(numberText(0.5), "0.5");
  EXPECT_EQ(numberText(-2.5), "-2.5");
  EXPECT_EQ(numberText(3.0), "3");
  EXPECT_EQ(numberText(1200), "1200");
  EXPECT_EQ(numberText(61.999 - 60), "1.999");
  EXPECT_EQ(numberText(0.1 + 0.2), "0.3");
  EXPECT_EQ(numberText(1.0 / 3), "0.333333333333333");
  EXPECT_EQ(numberText(100.0 / 3), "33.3333333333333");
  EXPECT_EQ(numberText(0.0001), "0.0001");
  EXPECT_EQ(numberText(-1e-20), "-0.00000000000000000001");
  EXPECT_EQ(numberText(-5e-324).size(), 341u);  // the smallest there is keeps its digits too
}

TEST(NumberText, WritesLargeNumbersWithoutAnExponent) {
  EXPECT_EQ(numberText(-1e20), "-100000000000000000000");
  EXPECT_EQ(numberText(999999999999999.0), "999999999999999");
}

TEST(LeadingNumber, ReadsWhatATextBeginsWith) {
  EXPECT_EQ(leadingNumber("12"), 12);
  EXPECT_EQ(leadingNumber("  7 laps"), 7);
  EXPECT_EQ(leadingNumber("2.5"), 2.5);
  EXPECT_EQ(leadingNumber("2.5.1"), 2.5);
  EXPECT_EQ(leadingNumber("-3"), -3);
  EXPECT_EQ(leadingNumber("+4"), 4);
  EXPECT_EQ(leadingNumber(".5"), 0.5);
  EXPECT_EQ(leadingNumber("1e2"), 100);
  EXPECT_EQ(leadingNumber("1d2"), 100);
  EXPECT_EQ(leadingNumber("1e"), 1);
  EXPECT_EQ(leadingNumber("1e-2x"), 0.01);
  EXPECT_EQ(leadingNumber("-1D+2"), -100);
  EXPECT_EQ(leadingNumber("5."), 5);
  EXPECT_EQ(leadingNumber("1 2"), 1);
  EXPECT_EQ(leadingNumber("2days"), 2);
}

TEST(LeadingNumber, IsZeroWhereThereIsNone) {
  for (const char* text : {"", " ", "x1", "-", ".", "-.", "e5", "\x1b", "abc", "+-3", "--3", "- 3", ". 5",
                           "inf", "-nan", "1e999", "-2e999"})
    EXPECT_EQ(leadingNumber(text), 0) << text;
}

TEST(CountedUnit, TakesAnSBeyondOne) {
  EXPECT_EQ(countedUnit(1, "hour"), "1 hour");
  EXPECT_EQ(countedUnit(2, "minute"), "2 minutes");
}

TEST(SaturatedSum, StaysWithinAnInt) {
  EXPECT_EQ(saturatedSum(40, -45), -5);
  EXPECT_EQ(saturatedSum(INT_MAX, 1), INT_MAX);
  EXPECT_EQ(saturatedSum(INT_MAX - 5, 5), INT_MAX);
  EXPECT_EQ(saturatedSum(INT_MIN, -1), INT_MIN);
}

TEST(FractionDigits, AreAlwaysThree) {
  EXPECT_EQ(fractionDigits("3.25"), "2 5 0 ");
  EXPECT_EQ(fractionDigits("15"), "0 0 0 ");
  EXPECT_EQ(fractionDigits("1.23456"), "2 3 4 ");
}

}  // namespace
}  // namespace vorn
