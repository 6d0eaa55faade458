#include "codriver/ghost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::DoubleEq;
using testing::Eq;
using testing::Gt;
using testing::IsNull;
using testing::Lt;
using testing::SizeIs;

constexpr LapKind kWheelFlying{.isByKeys = false, .isFlying = true};
constexpr LapKind kKeysFlying{.isByKeys = true, .isFlying = true};
constexpr LapKind kKeysStanding{.isByKeys = true, .isFlying = false};

GhostLap lapOf(double ticks, LapKind kind = kWheelFlying) {
  return {kind, ticks, {{1, 100, 40}, {2, 200, 50}, {4, 600, 70}}};
}

TEST(Ghosts, KeepTheBestLapOfEachKind) {
  Ghosts kept;
  EXPECT_TRUE(keepBetter(kept, lapOf(500)));
  EXPECT_TRUE(keepBetter(kept, lapOf(700, kKeysFlying))) << "another device has a best lap of its own";
  EXPECT_TRUE(keepBetter(kept, lapOf(800, kKeysStanding)));
  EXPECT_FALSE(keepBetter(kept, lapOf(500.01)));
  EXPECT_FALSE(keepBetter(kept, lapOf(500))) << "only a better one takes the place";
  EXPECT_TRUE(keepBetter(kept, lapOf(499.99)));
  EXPECT_THAT(kept, SizeIs(3));
  EXPECT_EQ(ghostOf(kept, kWheelFlying)->ticks, 499.99);
  EXPECT_EQ(ghostOf(kept, kKeysFlying)->ticks, 700);
}

TEST(Ghosts, TheRivalIsOfTheSameStartAndOfTheSameDeviceIfThereIsOne) {
  const Ghosts kept{lapOf(500), lapOf(700, kKeysStanding)};
  EXPECT_EQ(rivalOf(kept, kWheelFlying)->ticks, 500);
  EXPECT_EQ(rivalOf(kept, kKeysFlying)->ticks, 500) << "the wheel's, where the keys have none";
  EXPECT_EQ(rivalOf(kept, {.isByKeys = false, .isFlying = false})->ticks, 700);
  EXPECT_THAT(rivalOf({lapOf(500)}, kKeysStanding), IsNull());
  EXPECT_THAT(ghostOf(kept, kKeysFlying), IsNull());
}

TEST(GhostPlaces, LieOnTheLapAndBetweenItsTicks) {
  const GhostLap lap = lapOf(5);
  EXPECT_EQ(ghostAt(lap, 2), (GhostPlace{2, 200, 50}));
  EXPECT_EQ(ghostAt(lap, 3), (GhostPlace{3, 400, 60}));
  EXPECT_EQ(ghostAt(lap, 0.2), (GhostPlace{0.2, 100, 40})) << "it waits for its first tick";
  EXPECT_EQ(ghostAt(lap, 6), (GhostPlace{6, 1000, 70})) << "beyond its lap it drives on";
  EXPECT_EQ(ghostAt(GhostLap{}, 1), std::nullopt);
}

TEST(GhostPlaces, ASingleOneStandsStill) {
  EXPECT_EQ(ghostAt(GhostLap{{}, 5, {{1, 100, 40}}}, 9), (GhostPlace{9, 100, 40}));
}

TEST(GhostPlaces, TellWhenTheGhostWasThere) {
  const GhostLap lap = lapOf(5);
  EXPECT_THAT(ghostTicksAt(lap, 200), DoubleEq(2));
  EXPECT_THAT(ghostTicksAt(lap, 400), DoubleEq(3));
  EXPECT_THAT(ghostTicksAt(lap, 50), DoubleEq(1));
  EXPECT_THAT(ghostTicksAt(lap, 601), DoubleEq(5)) << "its lap's end";
}

TEST(GhostSounds, StandOnTheSideOfTheGhost) {
  EXPECT_EQ(ghostSound(0, 0).pan, 0);
  EXPECT_EQ(ghostSound(0, -10).pan, -400);
  EXPECT_EQ(ghostSound(0, 10).pan, 400);
  EXPECT_EQ(ghostSound(0, 100).pan, 3000);
}

TEST(GhostSounds, AreHigherAheadAndLowerBehind) {
  EXPECT_EQ(ghostSound(0, 0).pitch, 1);
  EXPECT_EQ(ghostSound(300, 0).pitch, 1.25);
  EXPECT_EQ(ghostSound(-150, 0).pitch, 0.875);
  EXPECT_EQ(ghostSound(-3000, 0).pitch, 0.75);
}

TEST(GhostSounds, FadeWithTheDistanceEitherWay) {
  EXPECT_EQ(ghostSound(0, 0).volume, -300);
  EXPECT_EQ(ghostSound(2000, 0).volume, -1800);
  EXPECT_EQ(ghostSound(-2000, 0).volume, -1800);
  EXPECT_TRUE(ghostSound(3999, 0).isInReach);
  EXPECT_FALSE(ghostSound(-4000, 0).isInReach);
}

TEST(Gaps, AreSaidInTenths) {
  EXPECT_EQ(gapText(0.44), "0 point 4 behind");
  EXPECT_EQ(gapText(-0.44), "0 point 4 ahead");
  EXPECT_EQ(gapText(1.96), "2 point 0 behind");
  EXPECT_EQ(gapText(-12.3), "12 point 3 ahead");
  EXPECT_EQ(gapText(0.05), "level");
  EXPECT_EQ(gapText(-0.049), "level");
  EXPECT_EQ(gapText(0.06), "0 point 1 behind");
}

}  // namespace
}  // namespace vorn
