#include "speech/speech.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "support/game_rig.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The silent voice takes 60 ms a letter.
constexpr int kLetterMs = 60;

TEST(Say, WaitsUntilItHasBeenSaidWithoutLettingKeysArrive) {
  GameRig rig;
  rig.plan({"press A"});
  EXPECT_EQ(rig.timed([](GameState& g) { say(g, "abcde"); }), 5 * kLetterMs);
  EXPECT_EQ(rig.g.lastKeyCode, "");
  rig.g.platform.yield();
  EXPECT_EQ(rig.g.lastKeyCode, "65");
}

TEST(Say, WaitsForWhatWasQueuedBefore) {
  GameRig rig;
  say2(rig.g, "abc");
  EXPECT_EQ(rig.timed([](GameState& g) { say(g, "de"); }), 5 * kLetterMs);
}

TEST(Say2, ReturnsAtOnce) {
  GameRig rig;
  EXPECT_EQ(rig.timed([](GameState& g) { say2(g, "abc"); }), 0);
  EXPECT_EQ(rig.g.speechVoice->RunningState(), Voice::kSpeaking);
}

TEST(Stopspeech, SilencesTheVoiceAndEmptiesItsQueue) {
  GameRig rig;
  say2(rig.g, "abc");
  say2(rig.g, "def");
  EXPECT_EQ(rig.timed(stopspeech), 0);
  EXPECT_NE(rig.g.speechVoice->RunningState(), Voice::kSpeaking);
}

TEST(Stopspeech, DoesNoHarmToASilentVoice) {
  GameRig rig;
  EXPECT_THAT(rig.spokenIn(stopspeech), ElementsAre("purge"));
  EXPECT_NE(rig.g.speechVoice->RunningState(), Voice::kSpeaking);
}

TEST(Saykey, EchoesTheKeyFasterThanUsual) {
  GameRig rig;
  rig.g.speechRate = 2;
  rig.g.lastKeyCode = "65";
  rig.g.lastKeyChar = "a";
  EXPECT_THAT(rig.told(saykey), ElementsAre("voice Rate 7", "purge", "queue a", "voice Rate 2"));
  EXPECT_EQ(rig.trace().of("speak").back().at("rate"), 7);
}

TEST(Saykey, LeavesTheUsualRateThoughTheEchoIsStillBeingSaid) {
  GameRig rig;
  rig.g.lastKeyCode = "65";
  rig.g.lastKeyChar = "a";
  saykey(rig.g);
  EXPECT_EQ(rig.g.speechVoice->RunningState(), Voice::kSpeaking);
  say2(rig.g, "b");
  EXPECT_EQ(rig.trace().of("speak").back().at("rate"), 0);
}

TEST(Saykey, OnlySilencesTheVoiceAfterF1) {
  GameRig rig;
  rig.g.lastKeyCode = "112";
  rig.g.lastKeyChar = "p";
  EXPECT_THAT(rig.told(saykey), ElementsAre("voice Rate 5", "purge", "voice Rate 0"));
}

TEST(Saykey, PassesARateBeyondTheVoiceUnchecked) {
  GameRig rig;
  rig.g.speechRate = 40;
  rig.g.lastKeyCode = "65";
  EXPECT_EQ(rig.told(saykey).front(), "voice Rate 45");
}

TEST(Complaints, AreSaidToTheEnd) {
  GameRig rig;
  EXPECT_THAT(rig.spokenIn(bk),
              ElementsAre("say  I'm sorry, but you have already used that key. Please try again."));
  EXPECT_THAT(
      rig.spokenIn(smbd),
      ElementsAre("say  I'm sorry, but you have already used that button. You may press the escape key "
                  "to end the joystick configuration."));
}

// The automatic speedometer.

class SpeedMarks : public testing::Test {
 protected:
  std::vector<std::string> at(double speed) {
    rig.g.speed = speed;
    return rig.spokenIn([](GameState& g) { ass(g); });
  }
  GameRig rig;
};

TEST_F(SpeedMarks, AreSaidOnceAsTheSpeedRisesPastThem) {
  EXPECT_THAT(at(0), IsEmpty());
  EXPECT_THAT(at(30), ElementsAre("purge", "queue 25"));
  EXPECT_THAT(at(55), ElementsAre("purge", "queue 50"));
  EXPECT_THAT(at(45), IsEmpty());
  EXPECT_THAT(at(55), ElementsAre("purge", "queue 50"));
}

TEST_F(SpeedMarks, AreNeitherSaidNorDueAgainAtExactlyTheirSpeed) {
  EXPECT_THAT(at(49), ElementsAre("purge", "queue 25"));
  EXPECT_THAT(at(50), IsEmpty());
  EXPECT_THAT(at(50.01), ElementsAre("purge", "queue 50"));
  EXPECT_THAT(at(50), IsEmpty());
  EXPECT_THAT(at(51), IsEmpty());
}

TEST_F(SpeedMarks, PassedTogetherAreAllSaidOnlyTheHighestIsHeard) {
  EXPECT_THAT(at(60), ElementsAre("purge", "queue 25", "purge", "queue 50"));
  EXPECT_EQ(rig.g.speedMarkSaid[1], 1);
  EXPECT_EQ(rig.g.speedMarkSaid[2], 1);
  EXPECT_EQ(rig.g.speedMarkSaid[3], 0);
}

TEST_F(SpeedMarks, EndAtTwoHundredAndFifty) {
  at(240);
  EXPECT_THAT(at(250.5), ElementsAre("purge", "queue 250"));
  EXPECT_THAT(at(300), IsEmpty());
}

TEST_F(SpeedMarks, AreNotEvenKeptWithTheOptionOff) {
  rig.g.autoSpeedometer = kOff;
  rig.g.speedMarkSaid.fill(7);
  EXPECT_THAT(at(0), IsEmpty());
  EXPECT_THAT(at(60), IsEmpty());
  std::array<int, 12> untouched;
  untouched.fill(7);
  EXPECT_EQ(rig.g.speedMarkSaid, untouched);
}

// Reading aloud.

TEST(SpeakAndWait, YieldsUntilItHasBeenSaid) {
  GameRig rig;
  bool isWhole = false;
  EXPECT_EQ(rig.timed([&](GameState& g) { isWhole = speakAndWait(g, "abcde"); }), 5 * kLetterMs);
  EXPECT_TRUE(isWhole);
}

TEST(SpeakAndWait, EndsAtAKeyAndLeavesTheVoiceSpeaking) {
  GameRig rig;
  rig.plan({"wait 100", "press A"});
  bool isWhole = true;
  EXPECT_EQ(rig.timed([&](GameState& g) { isWhole = speakAndWait(g, "abcde"); }), 101);
  EXPECT_FALSE(isWhole);
  EXPECT_EQ(rig.g.speechVoice->RunningState(), Voice::kSpeaking);
}

TEST(SpeakAndWait, DoesNotHangOnATextThatIsOverBeforeTheFirstLook) {
  GameRig rig;
  for (const char* text : {" ", "", "a"}) {
    rig.g.speechVoice->setRate(15);
    EXPECT_LE(rig.timed([&](GameState& g) { speakAndWait(g, text); }), 20) << '"' << text << '"';
  }
}

}  // namespace
}  // namespace vorn
