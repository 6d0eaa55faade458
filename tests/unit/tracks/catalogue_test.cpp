#include "tracks/catalogue.h"

#include <gtest/gtest.h>

#include "tracks/special_rules.h"
#include "unit/tracks/listing.h"

namespace vorn {
namespace {

class Catalogue : public testing::TestWithParam<std::size_t> {
 protected:
  const Track& track() const { return *allTracks()[GetParam()]; }
  const listing::Listed& listed() const { return listing::kTracks[GetParam()]; }
  /// A car moved by one tick of segment `i`.
  RaceState pushedAt(std::size_t i, double speed) const {
    RaceState car;
    car.speed = speed;
    pushCar(car, track().segments[i].push);
    return car;
  }
};

std::string nameOf(const testing::TestParamInfo<std::size_t>& tested) {
  static constexpr const char* kNames[] = {"Maple", "Painsville", "Chagrin",  "Ohio",        "Chardon",
                                           "Erie",  "Mentor",     "Kirtland", "Chesterland", "Geneva"};
  return kNames[tested.index];
}

INSTANTIATE_TEST_SUITE_P(AllTracks, Catalogue, testing::Range(std::size_t{0}, std::size_t{10}), nameOf);

TEST(AllTracks, AreTen) {
  EXPECT_EQ(allTracks().size(), std::size(listing::kTracks));
  EXPECT_EQ(allTracks().size(), 10u);
}

TEST_P(Catalogue, HasItsConstants) {
  EXPECT_STREQ(track().welcome, listed().welcome);
  EXPECT_EQ(track().steerDrag, listed().steerDrag);
  EXPECT_EQ(track().segments.size(), listed().segments);
  EXPECT_EQ(lapLength(track()), listed().lapLength);
  EXPECT_EQ(track().segments.back().length, listed().finish);
}

TEST_P(Catalogue, HasEveryNumberOfEverySegment) {
  ASSERT_EQ(track().segments.size(), listed().rows.size());
  for (std::size_t i = 0; i < listed().rows.size(); ++i) {
    SCOPED_TRACE(i + 1);
    const Segment& segment = track().segments[i];
    const listing::Row& row = listed().rows[i];
    EXPECT_EQ(segment.length, row.length);
    EXPECT_EQ(cueLength(segment), row.cueLength);
    EXPECT_EQ(segment.cue, row.cue);
    EXPECT_EQ(segment.scale, row.scale);
    EXPECT_EQ(segment.pan, row.pan);
    EXPECT_EQ(segment.push.turn, row.turn);
    if (row.divisor == 0) continue;
    EXPECT_EQ(segment.push.fixed, row.fixed);
    EXPECT_EQ(segment.push.divisor, row.divisor);
  }
}

TEST_P(Catalogue, PushesTheCarOutwardInEveryTurn) {
  for (std::size_t i = 0; i < listed().rows.size(); ++i) {
    SCOPED_TRACE(i + 1);
    if (track().segments[i].push.rule) continue;
    const listing::Row& row = listed().rows[i];
    EXPECT_NEAR(pushedAt(i, 45).lateralPosition, row.at45, 1e-6);
    EXPECT_NEAR(pushedAt(i, 137).lateralPosition, row.at137, 1e-6);
    EXPECT_NEAR(pushedAt(i, 225).lateralPosition, row.at225, 1e-6);
    EXPECT_EQ(pushedAt(i, 0).lateralPosition, 0);
  }
}

TEST(Chesterland, HasACueOnTheWrongSideOfItsThirdSegment) {
  for (const Track* track : allTracks()) {
    for (std::size_t i = 0; i < track->segments.size(); ++i) {
      const Segment& segment = track->segments[i];
      if (segment.push.turn == Turn::kNone) continue;
      const bool standsOnTheInside = (segment.pan < 0) == (segment.push.turn == Turn::kLeft);
      EXPECT_EQ(standsOnTheInside, track != &kChesterland || i != 2) << track->name << ", " << i + 1;
    }
  }
}

TEST(SpecialRules, BelongToSingleTracks) {
  for (const Track* track : allTracks()) {
    SCOPED_TRACE(track->name);
    EXPECT_EQ(track->rule, track == &kChardon ? unlimitTopGear : nullptr);
    for (std::size_t i = 0; i < track->segments.size(); ++i) {
      const Segment& segment = track->segments[i];
      const bool isBanked = track == &kGeneva && segment.push.turn != Turn::kNone;
      EXPECT_EQ(segment.push.rule, isBanked ? driveBankedTurn : nullptr);
      const bool isRun = track == &kChesterland && i == 3;
      EXPECT_EQ(segment.atEnd, isRun ? jumpSwimmingHole : nullptr);
    }
  }
}

}  // namespace
}  // namespace vorn
