#include "platform/desktop/caption_painter.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace vorn {
namespace {

class CaptionPainterTest : public testing::Test {
 protected:
  using Surface = std::unique_ptr<SDL_Surface, void (*)(SDL_Surface*)>;

  static Surface blank(int width, int height) {
    return {SDL_CreateRGBSurfaceWithFormat(0, width, height, 32, SDL_PIXELFORMAT_ARGB8888), SDL_FreeSurface};
  }
  /// How many pixels of the rows from `top` to `bottom` are at least as bright as `level`.
  static int pixels(const SDL_Surface& surface, int top, int bottom, int level = 100) {
    int count = 0;
    for (int y = top; y < bottom; ++y) {
      const auto* row = reinterpret_cast<const std::uint8_t*>(surface.pixels) + y * surface.pitch;
      for (int x = 0; x < surface.w; ++x) {
        count += row[4 * x] >= level;
      }
    }
    return count;
  }

  CaptionPainter painter;
  Surface surface = blank(640, 360);
};

TEST_F(CaptionPainterTest, WithoutTextTheWindowIsBlack) {
  SDL_FillRect(surface.get(), nullptr, 0xFFFFFFFF);
  painter.paint(*surface);
  EXPECT_EQ(pixels(*surface, 0, 360, 1), 0);
}

TEST_F(CaptionPainterTest, TheLatestStandsBrightOnTopTheEarlierOnesGreyBelow) {
  painter.add(" Exit Game. ");
  painter.paint(*surface);
  EXPECT_GT(pixels(*surface, 0, 50, 250), 100);
  EXPECT_EQ(pixels(*surface, 60, 360), 0);
  painter.add(" Start Game. ");
  painter.paint(*surface);
  EXPECT_GT(pixels(*surface, 0, 50, 250), 100);
  EXPECT_GT(pixels(*surface, 50, 100), 100);
  EXPECT_EQ(pixels(*surface, 50, 360, 200), 0);
}

TEST_F(CaptionPainterTest, LongTextsAreWrappedAndEndAtTheWindowsEdge) {
  std::string text;
  for (int i = 0; i < 200; ++i) {
    text += "The quick brown fox jumps over the lazy dog. ";
  }
  painter.add(text);
  painter.add(text);
  painter.paint(*surface);
  EXPECT_GT(pixels(*surface, 320, 360), 100);
}

TEST_F(CaptionPainterTest, OnlyTheLastEightStand) {
  painter.add("the ninth");
  for (int i = 0; i < 8; ++i) {
    painter.add("");
  }
  painter.add("the latest");
  painter.paint(*surface);
  EXPECT_GT(pixels(*surface, 0, 60, 250), 100);
  EXPECT_EQ(pixels(*surface, 60, 360), 0);
}

TEST_F(CaptionPainterTest, LettersGrowWithTheWindow) {
  painter.add("Lap 3");
  painter.paint(*surface);
  const auto large = blank(1280, 720);
  painter.paint(*large);
  EXPECT_NEAR(static_cast<double>(pixels(*large, 0, 720)) / pixels(*surface, 0, 360), 4, 1);
}

TEST_F(CaptionPainterTest, NoTextIsTooOddToBePainted) {
  for (const char* text :
       {"", " ", "\n\n", "M\xC3\xBCller \xE2\x82\xAC", "broken \xFF\xC3 bytes", "\x01\x1B"}) {
    painter.add(text);
  }
  for (int i = 0; i < 100; ++i) {
    painter.add("more");
  }
  painter.paint(*surface);
  const auto tiny = blank(1, 1);
  painter.paint(*tiny);
}

}  // namespace
}  // namespace vorn
