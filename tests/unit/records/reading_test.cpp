#include "records/reading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using Block = std::vector<std::string>;
using Blocks = std::vector<Block>;

TEST(SpokenPieces, AnOrdinaryLineIsOne) {
  EXPECT_EQ(spokenPieces(""), Block{""});
  EXPECT_EQ(spokenPieces(" Your time for 1 lap. "), Block{" Your time for 1 lap. "});
  EXPECT_EQ(spokenPieces(std::string(1000, 'x')).size(), 1U);
}

TEST(SpokenPieces, ALongerOneIsCutBehindBlanksAndNothingIsLost) {
  std::string line;
  for (int i = 0; line.size() < 5'000'000; ++i) line += std::to_string(i) + " ";
  std::string together;
  for (const std::string& piece : spokenPieces(line)) {
    EXPECT_LE(piece.size(), 1000U);
    EXPECT_EQ(piece.back(), ' ');
    together += piece;
  }
  EXPECT_TRUE(together == line);
}

TEST(SpokenPieces, WithoutBlanksTheyAreAsLongAsMayBe) {
  EXPECT_EQ(spokenPieces(std::string(2500, 'x')),
            (Block{std::string(1000, 'x'), std::string(1000, 'x'), std::string(500, 'x')}));
  EXPECT_EQ(spokenPieces(" " + std::string(1500, 'x')),
            (Block{" " + std::string(999, 'x'), std::string(501, 'x')}));
}

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
