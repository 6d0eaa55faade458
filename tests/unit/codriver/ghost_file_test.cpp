#include "codriver/ghost_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "unit/codriver/laps.h"

namespace vorn {
namespace {

using testing::IsEmpty;
using testing::Le;
using testing::Lt;
using testing::SizeIs;
using testing::StartsWith;

/// Two laps of the oval, with places that are no round numbers.
GhostFile ovalLaps() {
  LapWatch watch(kKirtland);
  SteadyCar car(kKirtland, 123.4567, 12.345);
  GhostFile file{.track = 8, .ghosts = {nextLap(watch, car)}};
  file.ghosts.push_back(nextLap(watch, car));
  return file;
}

GhostFault faultOf(const std::string& bytes) {
  const GhostReading reading = decodeGhosts(bytes);
  EXPECT_EQ(reading.file.ghosts.empty(), reading.fault != GhostFault::kNone);
  return reading.fault;
}

TEST(GhostFiles, AreNamedByTheirTrack) {
  EXPECT_EQ(ghostFileName(1), "vorn1maple.ghost");
  EXPECT_EQ(ghostFileName(9), "vorn1chesterland.ghost");
}

TEST(GhostFiles, GiveBackWhatWasPutIn) {
  const GhostFile written = ovalLaps();
  const GhostReading reading = decodeGhosts(encodeGhosts(written));
  ASSERT_EQ(reading.fault, GhostFault::kNone);
  EXPECT_EQ(reading.file.track, 8);
  ASSERT_THAT(reading.file.ghosts, SizeIs(2));
  for (std::size_t lap = 0; lap < 2; ++lap) {
    const GhostLap& before = written.ghosts[lap];
    const GhostLap& after = reading.file.ghosts[lap];
    EXPECT_EQ(after.kind, before.kind);
    EXPECT_NEAR(after.ticks, before.ticks, 0.0006);
    ASSERT_THAT(after.places, SizeIs(before.places.size()));
    for (std::size_t i = 0; i < before.places.size(); ++i) {
      EXPECT_NEAR(after.places[i].ticks, before.places[i].ticks, 0.0006);
      EXPECT_NEAR(after.places[i].distance, before.places[i].distance, 0.051);
      EXPECT_NEAR(after.places[i].lateral, before.places[i].lateral, 0.051);
    }
  }
  EXPECT_EQ(encodeGhosts(reading.file), encodeGhosts(written)) << "nothing wears off";
}

TEST(GhostFiles, AreCompact) {
  const GhostFile file = ovalLaps();
  const std::size_t places = file.ghosts[0].places.size() + file.ghosts[1].places.size();
  EXPECT_THAT(encodeGhosts(file).size(), Lt(5 * places));
}

TEST(GhostFiles, OfTheLongestLapsAreStillReadWhole) {
  GhostFile file;
  for (const bool isByKeys : {false, true}) {
    for (const bool isFlying : {false, true}) {
      GhostLap lap{{isByKeys, isFlying}, 3000, {}};
      for (std::size_t i = 0; i < kMostGhostPlaces; ++i) {
        const auto tick = static_cast<double>(i);
        lap.places.push_back({tick + 1, 240 * tick, 50 + 30 * std::sin(tick)});
      }
      file.ghosts.push_back(lap);
    }
  }
  const std::string bytes = encodeGhosts(file);
  EXPECT_THAT(bytes.size(), Le(std::size_t{64} << 10));
  EXPECT_EQ(faultOf(bytes), GhostFault::kNone);
  file.ghosts[0].places.push_back({4000, 0, 0});
  EXPECT_EQ(faultOf(encodeGhosts(file)), GhostFault::kDamaged) << "one place more";
}

TEST(GhostFiles, CanBeEmpty) {
  const GhostReading reading = decodeGhosts(encodeGhosts({.track = 10, .ghosts = {}}));
  EXPECT_EQ(reading.fault, GhostFault::kNone);
  EXPECT_EQ(reading.file.track, 10);
  EXPECT_THAT(reading.file.ghosts, IsEmpty());
}

TEST(GhostFiles, AnyChangedByteIsFoundOut) {
  const std::string good = encodeGhosts(ovalLaps());
  for (std::size_t i = 0; i < good.size(); ++i) {
    std::string bad = good;
    bad[i] = static_cast<char>(bad[i] ^ 0x10);
    EXPECT_NE(faultOf(bad), GhostFault::kNone) << "byte " << i;
  }
}

TEST(GhostFiles, ThatEndTooSoonAreDamaged) {
  const std::string good = encodeGhosts(ovalLaps());
  for (std::size_t length = 0; length < good.size(); ++length) {
    EXPECT_EQ(faultOf(good.substr(0, length)), GhostFault::kDamaged) << length;
  }
  EXPECT_EQ(faultOf(good + "x"), GhostFault::kDamaged);
}

TEST(GhostFiles, OfAnotherVersionAreToldFromDamagedOnes) {
  std::string newer = encodeGhosts(ovalLaps());
  newer[9] = 2;
  EXPECT_EQ(faultOf(newer), GhostFault::kOtherVersion);
}

TEST(GhostFiles, OfATrackThatDoesNotExistAreDamaged) {
  EXPECT_EQ(decodeGhosts(encodeGhosts({.track = 11, .ghosts = {}})).fault, GhostFault::kDamaged);
  EXPECT_EQ(decodeGhosts(encodeGhosts({.track = 0, .ghosts = {}})).fault, GhostFault::kDamaged);
}

TEST(GhostFiles, WhoseTimeStandsStillAreDamaged) {
  GhostFile file{.track = 1, .ghosts = {{{}, 10, {{1, 0, 50}, {1, 10, 50}}}}};
  EXPECT_EQ(faultOf(encodeGhosts(file)), GhostFault::kDamaged);
}

}  // namespace
}  // namespace vorn
