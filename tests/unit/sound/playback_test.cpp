#include "sound/playback.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sound/loading.h"
#include "support/game_rig.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kSilentMs = 100;  // what most silent recordings last

void playSecond(GameState& g) {
  play(g, "vorn12");  // a second long
}
void play2Second(GameState& g) {
  play2(g, "vorn12");
}
void play3Second(GameState& g) {
  play3(g, "vorn12");
}

TEST(Play, LoadsPlaysToTheEndStopsAndEmptiesItsSlot) {
  GameRig rig;
  EXPECT_THAT(rig.toldTo("oneShotBuffer", playSecond),
              ElementsAre("create vorn12.wav", "SetCurrentPosition 0", "SetVolume 0", "SetFrequency 22051",
                          "Play 0", "Stop", "release"));
}

TEST(Play, LastsAsLongAsItsSound) {
  GameRig rig;
  EXPECT_EQ(rig.timed(playSecond), 3 + 1000);  // a hertz faster than recorded does not show in milliseconds
}

TEST(Play, TakesTheVolumeThePlayerHasChosen) {
  GameRig rig;
  rig.g.soundVolume = -700;
  EXPECT_EQ(rig.toldTo("oneShotBuffer", playSecond).at(2), "SetVolume -700");
}

TEST(Play, ForgetsThePendingKeyFirst) {
  GameRig rig;
  rig.does("press A");
  ASSERT_EQ(rig.g.lastKeyCode, "65");
  playSecond(rig.g);
  EXPECT_EQ(rig.g.lastKeyCode, "");
}

TEST(Play, IsNotCutShortByAKeyButTakesIt) {
  GameRig rig;
  rig.plan({"wait 500", "press A"});
  EXPECT_EQ(rig.timed(playSecond), 1003);
  EXPECT_EQ(rig.g.lastKeyCode, "65");
}

TEST(Play2, ReturnsWhileItsSoundPlays) {
  GameRig rig;
  EXPECT_EQ(rig.timed(play2Second), 3);
  EXPECT_THAT(rig.sounding(), ElementsAre("oneShotBuffer"));
}

TEST(Play2, ForgetsThePendingKeyFirst) {
  GameRig rig;
  rig.does("press A");
  play2Second(rig.g);
  EXPECT_EQ(rig.g.lastKeyCode, "");
}

TEST(Play2, ReplacesTheSoundBefore) {
  GameRig rig;
  play2Second(rig.g);
  EXPECT_THAT(rig.toldTo("oneShotBuffer", [](GameState& g) { play2(g, "vorn3"); }),
              ElementsAre("release", "create vorn3.wav", "SetCurrentPosition 0", "SetVolume 0",
                          "SetFrequency 22051", "Play 0"));
}

TEST(Play3, LastsAsLongAsItsSoundIfNobodyIntervenes) {
  GameRig rig;
  EXPECT_EQ(rig.timed(play3Second), 1003);
  EXPECT_EQ(rig.g.lastKeyCode, "");
}

TEST(Play3, EndsAtAKeyAndKeepsIt) {
  GameRig rig;
  rig.plan({"wait 500", "press A"});
  EXPECT_EQ(rig.timed(play3Second), 501);
  EXPECT_EQ(rig.g.lastKeyCode, "65");
  EXPECT_THAT(rig.sounding(), IsEmpty());
}

TEST(Play3, StopsAndEmptiesItsSlotAtAKey) {
  GameRig rig;
  rig.plan({"wait 500", "press A"});
  EXPECT_THAT(rig.toldTo("oneShotBuffer", play3Second),
              ElementsAre("create vorn12.wav", "SetCurrentPosition 0", "SetVolume 0", "SetFrequency 22051",
                          "Play 0", "Stop", "release"));
}

TEST(Play3, EndsAtTheEnterButtonAsIfAtAKey) {
  GameRig rig(Wheel::kController);
  rig.plan({"wait 500", "button 0 down"});
  EXPECT_EQ(rig.timed(play3Second), 501);
  EXPECT_EQ(rig.g.lastKeyCode, "1");
}

TEST(Play3, EndsAtOnceAtAKeyPressedWhileItLoads) {
  GameRig rig;
  rig.plan({"press A"});  // comes in the first of three yields before the sound starts
  EXPECT_EQ(rig.timed(play3Second), 3);
}

TEST(Play3, ForgetsAKeyPressedBefore) {
  GameRig rig;
  rig.does("press A");
  EXPECT_EQ(rig.timed(play3Second), 1003);
}

TEST(PlayPan, StartsItsSoundAtThePan) {
  GameRig rig;
  EXPECT_THAT(rig.toldTo("panBuffer", [](GameState& g) { PlayPan(g, "vorn26", -1000); }),
              ElementsAre("create vorn26.wav", "SetCurrentPosition 0", "SetVolume 0", "SetFrequency 22051",
                          "SetPan -1000", "Play 0"));
  EXPECT_THAT(rig.sounding(), ElementsAre("panBuffer"));
}

TEST(PlayPan, RoundsThePanHalvesToEven) {
  GameRig rig;
  const auto panOf = [&](double pan) {
    return rig.toldTo("panBuffer", [pan](GameState& g) { PlayPan(g, "vorn26", pan); }).end()[-2];
  };
  EXPECT_EQ(panOf(0.5), "SetPan 0");
  EXPECT_EQ(panOf(1.5), "SetPan 2");
  EXPECT_EQ(panOf(-2.5), "SetPan -2");
}

TEST(PlayPan, ForgetsThePendingKeyFirst) {
  GameRig rig;
  rig.does("press A");
  EXPECT_EQ(rig.timed([](GameState& g) { PlayPan(g, "vorn26", 0); }), 3);
  EXPECT_EQ(rig.g.lastKeyCode, "");
}

TEST(Playmark, OnlyPlays) {
  GameRig rig;
  EXPECT_THAT(rig.told(playmark), ElementsAre("markBuffer Play 0"));
}

TEST(Playmark, DoesNotRestartAMarkThatSounds) {
  GameRig rig;
  playmark(rig.g);
  rig.does("wait 59");
  for (int i = 0; i < 59; ++i) rig.g.platform.yield();
  playmark(rig.g);
  for (int i = 0; i < kSilentMs - 60; ++i) rig.g.platform.yield();
  EXPECT_THAT(rig.sounding(), IsEmpty());
}

TEST(Playmark, PlaysAMarkThatHasEndedFromItsBeginning) {
  GameRig rig;
  playmark(rig.g);
  for (int i = 0; i < 2 * kSilentMs; ++i) rig.g.platform.yield();
  playmark(rig.g);
  for (int i = 0; i < kSilentMs - 1; ++i) rig.g.platform.yield();
  EXPECT_THAT(rig.sounding(), ElementsAre("markBuffer"));
}

TEST(Playhorn, OnlyPlays) {
  GameRig rig;
  EXPECT_THAT(rig.told(playhorn), ElementsAre("hornBuffer Play 0"));
}

TEST(Sars, StartsTheLoopsOfARace) {
  GameRig rig;
  EXPECT_THAT(rig.told(sars),
              ElementsAre("wallLeftBuffer SetVolume -1000", "wallLeftBuffer SetPan -5000",
                          "wallRightBuffer SetVolume -1000", "wallRightBuffer SetPan 5000",
                          "wallLeftBuffer Play 1", "wallRightBuffer Play 1", "sound18Buffer SetVolume -6500",
                          "sound18Buffer Play 1", "sound9Buffer SetVolume -6500", "sound9Buffer Play 1"));
}

TEST(Sars, KeepsTheSilentLoopsSilentAtTheLowestMasterVolume) {
  GameRig rig;
  rig.g.soundVolume = -3500;
  const auto told = rig.told(sars);
  EXPECT_EQ(told.at(0), "wallLeftBuffer SetVolume -4500");
  EXPECT_EQ(told.at(2), "wallRightBuffer SetVolume -4500");
  EXPECT_EQ(told.at(6), "sound18Buffer SetVolume -6500");
  EXPECT_EQ(told.at(8), "sound9Buffer SetVolume -6500");
}

TEST(Sars, WaitsATenthOfASecond) {
  GameRig rig;
  EXPECT_EQ(rig.timed(sars), 101);
}

const auto kEveryLoopStopped =
    ElementsAre("engineBuffer Stop", "wallLeftBuffer Stop", "wallRightBuffer Stop", "warnBuffer Stop",
                "sound18Buffer Stop", "sound9Buffer Stop", "sound10Buffer Stop", "sound8Buffer Stop");

TEST(Stopall, StopsTheLoopsInOrder) {
  GameRig rig;
  fillSlot(rig.g, rig.g.warnBuffer, "vorn1t1");
  EXPECT_THAT(rig.told(stopall), kEveryLoopStopped);
}

TEST(Stopall, PassesOverAnEmptySlot) {
  GameRig rig;
  EXPECT_THAT(rig.told(stopall), ElementsAre("engineBuffer Stop", "wallLeftBuffer Stop",
                                             "wallRightBuffer Stop", "sound18Buffer Stop",
                                             "sound9Buffer Stop", "sound10Buffer Stop", "sound8Buffer Stop"));
}

TEST(Stopall, LeavesOneShotsAlone) {
  GameRig rig;
  play2Second(rig.g);
  playhorn(rig.g);
  playmark(rig.g);
  stopall(rig.g);
  EXPECT_THAT(rig.sounding(), ElementsAre("markBuffer", "hornBuffer", "oneShotBuffer"));
}

TEST(Stopall2, StopsTheLoopsInTheSameOrder) {
  GameRig rig;
  fillSlot(rig.g, rig.g.warnBuffer, "vorn1t1");
  EXPECT_THAT(rig.told(stopall2), kEveryLoopStopped);
}

TEST(Stopall2, FailsAtAnEmptySlot) {
  GameRig rig;
  EXPECT_THROW(stopall2(rig.g), PlatformError);
}

TEST(StopOneShot, EmptiesTheSlotWhateverItHolds) {
  GameRig rig;
  play2Second(rig.g);
  EXPECT_THAT(rig.told(stopOneShot), ElementsAre("oneShotBuffer Stop", "oneShotBuffer release"));
  EXPECT_THAT(rig.told(stopOneShot), IsEmpty());
}

TEST(Checkspeakers, PlaysOneSoundToEachSide) {
  GameRig rig;
  EXPECT_THAT(rig.told(checkspeakers),
              ElementsAre("say  The next sound that you hear will come out of the left speaker. ",
                          "oneShotBuffer create vorn6.wav", "oneShotBuffer SetCurrentPosition 0",
                          "oneShotBuffer SetVolume 0", "oneShotBuffer SetFrequency 22051",
                          "oneShotBuffer SetPan -2000", "oneShotBuffer Play 0", "oneShotBuffer Stop",
                          "say  The next sound that you hear will come out of the right speaker. ",
                          "oneShotBuffer release", "oneShotBuffer create vorn14.wav",
                          "oneShotBuffer SetCurrentPosition 0", "oneShotBuffer SetVolume 0",
                          "oneShotBuffer SetFrequency 22051", "oneShotBuffer SetPan 2000",
                          "oneShotBuffer Play 0", "oneShotBuffer Stop"));
}

TEST(Checkspeakers, WaitsBetweenItsSteps) {
  GameRig rig;
  rig.g.speechVoice->setRate(15);
  checkspeakers(rig.g);
  std::vector<std::int64_t> times;
  for (const TraceLine& line : rig.trace().of("sound")) {
    if (line.at("buffer") == "oneShotBuffer" && (line.at("op") == "Play" || line.at("op") == "Stop")) {
      times.push_back(line.at("ms"));
    }
  }
  ASSERT_EQ(times.size(), 4U);
  EXPECT_EQ(times[1] - times[0], kSilentMs);
  EXPECT_EQ(times[3] - times[2], 500);
  const std::int64_t spokenMs = times[2] - times[1] - 201 - 3 - 201;
  EXPECT_GT(spokenMs, 0);
  EXPECT_EQ(rig.now() - times[3], 3);
}

}  // namespace
}  // namespace vorn
