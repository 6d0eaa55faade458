#include "race/cue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/game_rig.h"

namespace vorn {
namespace {

using testing::ElementsAre;

/// The cue of Maple's first straight.
constexpr Cue kStraight{1, 30000, 30, -3000};

TEST(Startwarn, StartsTheCueNearlySilentAtItsPan) {
  GameRig rig;
  rig.g.soundVolume = -500;  // not taken
  EXPECT_THAT(rig.told([](GameState& g) {
    startwarn(g, {10, 4800, 20, -3000});
  }),
              ElementsAre("warnBuffer create vorn1t10.wav", "warnBuffer SetCurrentPosition 0",
                          "warnBuffer SetVolume -6500", "warnBuffer SetPan -3000",
                          "warnBuffer SetFrequency 22051", "warnBuffer Play 1"));
}

TEST(Startwarn, ReplacesACueThatLoops) {
  GameRig rig;
  startwarn(rig.g, kStraight);
  const auto told = rig.told([](GameState& g) { startwarn(g, {2, 9000, 15, -2000}); });
  EXPECT_EQ(told.at(0), "warnBuffer release");
  EXPECT_EQ(told.at(1), "warnBuffer create vorn1t2.wav");
}

struct CueAt {
  double lapPosition, lateralPosition;
  int volume, pan;
};

class Awarn : public testing::TestWithParam<CueAt> {};

TEST_P(Awarn, RisesTowardTheEndAndLeansAwayFromTheCar) {
  GameRig rig;
  startwarn(rig.g, kStraight);
  rig.g.lapPosition = GetParam().lapPosition;
  rig.g.lateralPosition = GetParam().lateralPosition;
  EXPECT_THAT(rig.told(awarn), ElementsAre("warnBuffer SetVolume " + std::to_string(GetParam().volume),
                                           "warnBuffer SetPan " + std::to_string(GetParam().pan)));
}

INSTANTIATE_TEST_SUITE_P(Positions, Awarn,
                         testing::Values(CueAt{0, 0, -3000, -3000}, CueAt{15000, 50, -1500, -3500},
                                         CueAt{30000, 100, 0, -4000}, CueAt{29999, 50, 0, -3500},
                                         CueAt{29990, 50, -1, -3500}, CueAt{5, 49.95, -3000, -3500},
                                         CueAt{15, 49.96, -2998, -3500}));

TEST(AwarnVolume, IsLoweredByTheMasterVolume) {
  GameRig rig;
  startwarn(rig.g, kStraight);
  rig.g.soundVolume = -3500;
  rig.g.lapPosition = 15000;
  EXPECT_EQ(rig.told(awarn).at(0), "warnBuffer SetVolume -5000");
}

TEST(AwarnVolume, StaysInTheRangeOfABufferHoweverFarTheCarSlides) {
  GameRig rig;
  startwarn(rig.g, {1, 9000, 30, -3000});
  rig.g.lapPosition = -1e6;
  EXPECT_EQ(rig.told(awarn).at(0), "warnBuffer SetVolume -10000");
  rig.g.lapPosition = 9200;
  EXPECT_EQ(rig.told(awarn).at(0), "warnBuffer SetVolume 0");
}

TEST(AwarnVolume, FailsWithoutACue) {
  GameRig rig;
  EXPECT_THROW(awarn(rig.g), PlatformError);
}

TEST(FollowCue, LeavesTheSlotAlone) {
  GameRig rig;
  startwarn(rig.g, kStraight);
  EXPECT_THAT(rig.told([](GameState& g) { followCue(g, {73, 5000, 2, -1000}); }), testing::IsEmpty());
  EXPECT_EQ(rig.g.warnDistance, 5000);
  EXPECT_EQ(rig.g.warnScale, 2);
  EXPECT_EQ(rig.g.warnPan, -1000);
}

}  // namespace
}  // namespace vorn
