// Real numbers by the C++ library and by the C functions.

#include "text/reals.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

#include "text/c_reals.h"

namespace vorn {
namespace {

struct Way {
  const char* name;
  std::optional<ParsedReal> (*parse)(std::string_view text);
  std::string (*fixed)(double value, int decimals);
};

class Reals : public testing::TestWithParam<Way> {
 protected:
  static double valueIn(std::string_view text) { return GetParam().parse(text).value().value; }
  static std::size_t lengthIn(std::string_view text) {
    const auto parsed = GetParam().parse(text);
    return parsed ? parsed->length : 0;
  }
};

TEST_P(Reals, ANumberIsReadAsFarAsItGoes) {
  EXPECT_EQ(valueIn("12.5,7"), 12.5);
  EXPECT_EQ(lengthIn("12.5,7"), 4U);
  EXPECT_EQ(valueIn("-.25e2"), -25);
  EXPECT_EQ(lengthIn("3."), 2U);
  EXPECT_EQ(lengthIn("3e"), 1U);
  EXPECT_EQ(lengthIn("3e+x"), 1U);
  EXPECT_EQ(lengthIn("0x10"), 1U);
  EXPECT_EQ(valueIn("0.1"), 0.1);
}

TEST_P(Reals, WhatIsNoNumberIsNothing) {
  for (const std::string_view text :
       {"", "-", ".", "+1", " 1", "e5", "x", "inf", "-infinity", "nan", "nan(1)"}) {
    EXPECT_FALSE(GetParam().parse(text)) << text;
  }
}

TEST_P(Reals, WhatFitsNoDoubleIsNothing) {
  EXPECT_FALSE(GetParam().parse("1e400"));
  EXPECT_FALSE(GetParam().parse("1e-400"));
  EXPECT_EQ(valueIn("1e308"), 1e308);
  EXPECT_EQ(valueIn("5e-324"), 5e-324);
}

TEST_P(Reals, DecimalsAreRoundedExactly) {
  EXPECT_EQ(GetParam().fixed(2.5, 0), "2");
  EXPECT_EQ(GetParam().fixed(0.125, 2), "0.12");
  EXPECT_EQ(GetParam().fixed(-1.0 / 3, 15), "-0.333333333333333");
  EXPECT_EQ(GetParam().fixed(1e22, 0), "10000000000000000000000");
  EXPECT_EQ(GetParam().fixed(-1.7976931348623157e308, 340).size(), 1U + 309 + 1 + 340);
}

INSTANTIATE_TEST_SUITE_P(By, Reals,
                         testing::Values(Way{"TheLibrary", parseReal, fixedText},
                                         Way{"C", c::parseReal, c::fixedText}),
                         [](const auto& way) { return way.param.name; });

TEST(BothReals, AgreeOnWhateverIsWritten) {
  std::mt19937_64 chance(7);
  for (int i = 0; i < 20000; ++i) {
    const auto value = std::bit_cast<double>(static_cast<std::uint64_t>(chance()));
    if (!std::isfinite(value)) continue;
    const int decimals = static_cast<int>(chance() % 341);
    const std::string text = fixedText(value, decimals);
    ASSERT_EQ(c::fixedText(value, decimals), text);
    ASSERT_EQ(c::parseReal(text)->value, parseReal(text)->value) << text;
  }
}

TEST(BothReals, AgreeOnWhateverIsRead) {
  constexpr std::string_view kAlphabet = "0123456789.-+eEx ,naif";
  std::mt19937 chance(8);
  for (int i = 0; i < 50000; ++i) {
    std::string text(chance() % 9, ' ');
    for (char& c : text) c = kAlphabet[chance() % kAlphabet.size()];
    const auto one = parseReal(text), other = c::parseReal(text);
    ASSERT_EQ(one.has_value(), other.has_value()) << text;
    if (!one) continue;
    ASSERT_EQ(one->value, other->value) << text;
    ASSERT_EQ(one->length, other->length) << text;
  }
}

}  // namespace
}  // namespace vorn
