#include "platform/common/rumble.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TickReport tick(int marblesTicks, int wallTicks, double speed = 100) {
  TickReport report{};
  report.speed = speed;
  report.marblesTicks = marblesTicks;
  report.wallTicks = wallTicks;
  return report;
}

bool isSame(const std::optional<Rumble>& felt, const Rumble& expected) {
  return felt && felt->heavy == expected.heavy && felt->light == expected.light && felt->ms == expected.ms;
}

TEST(RumbleSense, TheRoadIsSmooth) {
  RumbleSense sense;
  EXPECT_FALSE(sense.tick(tick(0, 0)));
  EXPECT_FALSE(sense.tick(tick(0, 0)));
}

TEST(RumbleSense, MarblesAreFeltAsLongAsTheCarIsOnThem) {
  RumbleSense sense;
  sense.tick(tick(0, 0));
  EXPECT_TRUE(isSame(sense.tick(tick(1, 0)), RumbleSense::kMarbles));
  EXPECT_TRUE(isSame(sense.tick(tick(2, 0)), RumbleSense::kMarbles));
  EXPECT_FALSE(sense.tick(tick(0, 0)));
}

TEST(RumbleSense, AScrapeIsFeltAndWhatItAddsUpToIsNot) {
  RumbleSense sense;
  EXPECT_TRUE(isSame(sense.tick(tick(3, 2)), RumbleSense::kScrape)) << "through the marbles";
  EXPECT_FALSE(sense.tick(tick(0, 2))) << "back on the road, contacts still counted";
  EXPECT_TRUE(isSame(sense.tick(tick(0, 3)), RumbleSense::kScrape));
}

TEST(RumbleSense, ACarThatStandsLetsNothingBeFelt) {
  RumbleSense sense;
  EXPECT_FALSE(sense.tick(tick(1, 1, 0)));
}

TEST(RumbleSense, OfTheSoundsTheCrashIsFelt) {
  EXPECT_TRUE(isSame(RumbleSense::sound("vorn15.wav"), RumbleSense::kCrash));
  for (const char* other : {"vorn11.wav", "vorn18.wav", "vorn10.wav", "vorn1.wav", ""}) {
    EXPECT_FALSE(RumbleSense::sound(other)) << other;
  }
}

}  // namespace
}  // namespace vorn
