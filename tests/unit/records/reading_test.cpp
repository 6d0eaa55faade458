#include "records/reading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using Block = std::vector<std::string>;
using Blocks = std::vector<Block>;

TEST(ReadingBlocks, ABlockEndsWithALineThatBeginsWithABlank) {
  EXPECT_EQ(readingBlocks({"a", "b", " c", "d", " e"}), (Blocks{{"a", "b", " c"}, {"d", " e"}}));
}

TEST(ReadingBlocks, TheLastLineEndsABlockToo) {
  EXPECT_EQ(readingBlocks({"a", " b", "c", "d"}), (Blocks{{"a", " b"}, {"c", "d"}}));
}

TEST(ReadingBlocks, TheBlankLineOfARunIsABlockAndItsHeaderGoesWithTheNextLine) {
  EXPECT_EQ(readingBlocks({" ", "Vorn 1 log for 3/7/2026 By Ostrin ", " The race took", " next"}),
            (Blocks{{" "}, {"Vorn 1 log for 3/7/2026 By Ostrin ", " The race took"}, {" next"}}));
}

TEST(ReadingBlocks, AnEmptyLineEndsNoBlock) {
  EXPECT_EQ(readingBlocks({"a", "", "b", " "}), (Blocks{{"a", "", "b", " "}}));
  EXPECT_EQ(readingBlocks({"", " "}), (Blocks{{"", " "}}));
}

TEST(ReadingBlocks, WithoutLinesThereAreNone) {
  EXPECT_TRUE(readingBlocks({}).empty());
}

TEST(ReadingBlocks, ABlockHasAtMost111Lines) {
  const Block lines(112, "x");
  const Blocks blocks = readingBlocks(lines);
  ASSERT_EQ(blocks.size(), 2u);
  EXPECT_EQ(blocks[0].size(), 111u);
  EXPECT_EQ(blocks[1].size(), 1u);
  EXPECT_EQ(readingBlocks(Block(111, "x")).size(), 1u);
  EXPECT_EQ(readingBlocks(Block(222, "x")).size(), 2u);
}

}  // namespace
}  // namespace vorn
