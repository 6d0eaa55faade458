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

TEST(Windows1252, utf8BecomesCodesAsFarAsThereAreSome) {
  EXPECT_EQ(windows1252FromUtf8("Norwegian Bokm\u00E5l \u20AC"), "Norwegian Bokm\xE5l \x80");
  EXPECT_EQ(windows1252FromUtf8("\u010Ce\u0161tina \u4E2D!"), "?e\x9Atina ?!");
  EXPECT_EQ(windows1252FromUtf8("\xC3"), "?");
  EXPECT_EQ(windows1252FromUtf8(""), "");
}

TEST(Windows1252, printableTextHasBlanksForWhatCannotBeShown) {
  EXPECT_EQ(printableUtf8(std::string("a\0\x1B[2J\x7F\r\nb", 10)), "a  [2J   b");
  EXPECT_EQ(printableUtf8("\x81\x8D\x8F\x90\x9D"), "     ");
  EXPECT_EQ(printableUtf8(" M\xFCller \x80"), " M\u00FCller \u20AC");
}

}  // namespace
}  // namespace vorn
