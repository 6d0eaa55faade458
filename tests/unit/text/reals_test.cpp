#include "text/reals.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

std::size_t lengthIn(std::string_view text) {
  const auto parsed = parseReal(text);
  return parsed ? parsed->length : 0;
}

TEST(Reals, ANumberIsReadAsFarAsItGoes) {
  EXPECT_EQ(parseReal("12.5,7")->value, 12.5);
  EXPECT_EQ(lengthIn("12.5,7"), 4U);
  EXPECT_EQ(parseReal("-.25e2")->value, -25);
  EXPECT_EQ(lengthIn("3."), 2U);
  EXPECT_EQ(lengthIn("3e"), 1U);
  EXPECT_EQ(lengthIn("3e+x"), 1U);
  EXPECT_EQ(parseReal("0.1")->value, 0.1);
}

TEST(Reals, WhatIsNoNumberIsNothing) {
  for (const std::string_view text : {"", "-", ".", "+1", " 1", "e5", "x"}) {
    EXPECT_FALSE(parseReal(text)) << text;
  }
}

TEST(Reals, WhatFitsNoDoubleIsNothing) {
  EXPECT_FALSE(parseReal("1e400"));
  EXPECT_EQ(parseReal("1e308")->value, 1e308);
}

TEST(Reals, DecimalsAreRoundedExactly) {
  EXPECT_EQ(fixedText(2.5, 0), "2");
  EXPECT_EQ(fixedText(0.125, 2), "0.12");
  EXPECT_EQ(fixedText(-1.0 / 3, 15), "-0.333333333333333");
  EXPECT_EQ(fixedText(1e22, 0), "10000000000000000000000");
}

}  // namespace
}  // namespace vorn
