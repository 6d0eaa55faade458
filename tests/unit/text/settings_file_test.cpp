#include "text/settings_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

TEST(TextLines, AcceptsEveryLineEnd) {
  EXPECT_THAT(textLines("a\r\nb\nc\rd"), ElementsAre("a", "b", "c", "d"));
  EXPECT_THAT(textLines("a\r\n"), ElementsAre("a"));
  EXPECT_THAT(textLines("a\r\n\r\n"), ElementsAre("a", ""));
  EXPECT_THAT(textLines("\r\r"), ElementsAre("", ""));
  EXPECT_THAT(textLines(""), IsEmpty());
}

TEST(SettingsText, WritesOneNumberALine) {
  EXPECT_EQ(settingsText({0, -3, 90}), "0\r\n-3\r\n90\r\n");
}

TEST(ReadSettings, CutsAtCommasAndLineEndsAndIgnoresBlanks) {
  EXPECT_THAT(readSettings(" 1, 2\r\n+3\n"), ElementsAre(Optional(1.0), Optional(2.0), Optional(3.0)));
}

TEST(ReadSettings, LeavesOutWhatIsNoNumber) {
  const auto values = readSettings("1\r\nx\r\n\r\n3x\r\n1e999\r\nnan\r\ninf\r\n");
  ASSERT_EQ(values.size(), 7u);
  EXPECT_THAT(values[0], Optional(1.0));
  for (std::size_t i = 1; i < values.size(); ++i) EXPECT_FALSE(values[i]) << i;
}

TEST(ReadSettingsInto, GoesAsFarAsTheFileDoes) {
  int a = 7, b = 8, c = 9;
  EXPECT_TRUE(readSettingsInto("5\r\n6", {&a, &b, &c}));
  EXPECT_EQ(a, 5);
  EXPECT_EQ(b, 6);
  EXPECT_EQ(c, 9);
}

TEST(ReadSettingsInto, KeepsTheValueWhoseTextIsNoNumber) {
  int a = 7, b = 8, c = 9;
  EXPECT_FALSE(readSettingsInto("letters\r\n\r\n6", {&a, &b, &c}));
  EXPECT_EQ(a, 7);
  EXPECT_EQ(b, 8);
  EXPECT_EQ(c, 6);
}

TEST(ReadSettingsInto, TakesHugeNumbersForZero) {
  int a = 7, b = 8;
  readSettingsInto("99999999999,-1e300", {&a, &b});
  EXPECT_EQ(a, 0);
  EXPECT_EQ(b, 0);
}

}  // namespace
}  // namespace vorn
