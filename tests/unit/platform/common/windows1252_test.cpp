#include "platform/common/windows1252.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(Windows1252, plainTextStaysAsItIs) {
  EXPECT_EQ(utf8FromWindows1252(" Exit Game. "), " Exit Game. ");
  EXPECT_EQ(utf8FromWindows1252(std::string("a\0\x1B\x7F", 4)), std::string("a\0\x1B\x7F", 4));
  EXPECT_EQ(utf8FromWindows1252(""), "");
}

TEST(Windows1252, upperCodesBecomeTheirCharacters) {
  EXPECT_EQ(utf8FromWindows1252("\xE0\xFE\xFF"), "\u00E0\u00FE\u00FF");
  EXPECT_EQ(utf8FromWindows1252("\xA0"), "\u00A0");
  EXPECT_EQ(utf8FromWindows1252("\x80\x8E\x9F"), "\u20AC\u017D\u0178");
}

TEST(Windows1252, codesWithoutACharacterStayControls) {
  EXPECT_EQ(utf8FromWindows1252("\x81\x9D"), "\xC2\x81\xC2\x9D");
}

}  // namespace
}  // namespace vorn
