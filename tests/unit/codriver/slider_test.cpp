#include "codriver/slider.h"

#include <gtest/gtest.h>

#include "tracks/catalogue.h"

namespace vorn {
namespace {

TickReport carOn(int segment, double lapPosition, double place, double speed) {
  TickReport tick{};
  tick.segment = segment;
  tick.lapPosition = lapPosition;
  tick.lateralPosition = place;
  tick.speed = speed;
  return tick;
}

TEST(PlaceAhead, IsWhereTheCarIsOnAStraight) {
  EXPECT_EQ(placeAhead(kMaple, carOn(1, 1000, 63, 200), {}), 63);
}

TEST(PlaceAhead, MovesWithTheWheel) {
  EXPECT_NEAR(placeAhead(kMaple, carOn(1, 1000, 50, 200), {.steering = 3000}), 50 + 7 * 2, 1e-9);
  EXPECT_NEAR(placeAhead(kMaple, carOn(1, 1000, 50, 200), {.steering = -3000}), 50 - 7 * 2, 1e-9);
}

TEST(PlaceAhead, KnowsThatAHeldKeyGoesOnBuildingUp) {
  const double wheel = placeAhead(kMaple, carOn(1, 1000, 50, 200), {.steering = 1000});
  const double key = placeAhead(kMaple, carOn(1, 1000, 50, 200), {.steering = 1000, .byKeys = true});
  EXPECT_GT(key, wheel + 3);
}

TEST(PlaceAhead, SeesTheTurnBeforeTheCarIsInIt) {
  EXPECT_GT(placeAhead(kErie, carOn(1, 33000 - 400, 50, 200), {}), 80);
  EXPECT_EQ(placeAhead(kErie, carOn(1, 33000 - 2000, 50, 200), {}), 50);
}

TEST(PlaceAhead, GoesFromTheLastSegmentToTheFirst) {
  EXPECT_LT(placeAhead(kErie, carOn(13, 8800, 50, 200), {}), placeAhead(kErie, carOn(13, 1000, 50, 200), {}));
}

TEST(PlaceAhead, StaysOnTheTrack) {
  EXPECT_EQ(placeAhead(kErie, carOn(2, 1000, 90, 200), {}), 100);
  EXPECT_EQ(placeAhead(kMaple, carOn(1, 1000, 10, 200), {.steering = -10000}), 0);
  EXPECT_EQ(placeAhead(kErie, carOn(2, 1000, 90, 0), {}), 90);  // a standing car stays
}

TEST(SliderTone, IsSilentInTheSafeMiddle) {
  for (const double place : {28.0, 40.0, 50.0, 60.0, 72.0}) EXPECT_FALSE(sliderTone(place, false)) << place;
  EXPECT_TRUE(sliderTone(27.9, false));
  EXPECT_TRUE(sliderTone(72.1, false));
}

TEST(SliderTone, GrowsLouderAndHigherOnTheSideOfTheDanger) {
  const auto near = sliderTone(95, false), far = sliderTone(80, false), left = sliderTone(5, false);
  EXPECT_GT(near->volume, far->volume);
  EXPECT_GT(near->pitch, far->pitch);
  EXPECT_GT(near->pan, 0);
  EXPECT_LT(left->pan, 0);
  EXPECT_EQ(left->pitch, near->pitch);
  EXPECT_EQ(sliderTone(100, false)->pitch, 1040);
}

TEST(SliderTone, CanBeReadBack) {
  for (double place = 0; place <= 100; place += 1) {
    for (const bool isBeforeJump : {false, true}) {
      const auto tone = sliderTone(place, isBeforeJump);
      if (!tone || (isBeforeJump && (place < 25 || place > 75))) continue;
      EXPECT_NEAR(placeOfTone(*tone, isBeforeJump), place, 0.1);
    }
  }
}

TEST(SliderTone, MakesForTheRampBeforeAJump) {
  EXPECT_TRUE(sliderTone(58, true));
  EXPECT_FALSE(sliderTone(53, true));
  EXPECT_TRUE(isBeforeJump(kChesterland, carOn(4, 6000, 50, 115)));
  EXPECT_FALSE(isBeforeJump(kChesterland, carOn(4, 1000, 50, 115)));
  EXPECT_FALSE(isBeforeJump(kChesterland, carOn(5, 4000, 50, 115)));
  EXPECT_FALSE(isBeforeJump(kChesterland, carOn(0, 4000, 50, 115)));
}

}  // namespace
}  // namespace vorn
