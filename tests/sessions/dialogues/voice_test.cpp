// The voice, its rate and volume, the volume of the sounds, and their file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dialogue.h"
#include "platform/common/random.h"

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::Not;

const std::string kFile = "vorn1voc.cfg";
const Told kSaved = {"file write vorn1voc.cfg"};
const std::vector<std::string> kEverything = {"speak", "voice", "sound", "file"};

// Choosing a voice.

const Told kQuestion = {"queue  do you wish to use this voice? yes "};

/// The cue that chance picks for a run with this seed.
std::string sampleOf(std::uint64_t seed) {
  return "vorn1t" + std::to_string(static_cast<int>(RandomSource(seed).fraction() * 71) + 1) + ".wav";
}

Told sampleLoaded(std::uint64_t seed = 1, const std::string& volume = "-500") {
  return {"oneShotBuffer create " + sampleOf(seed), "oneShotBuffer SetVolume " + volume,
          "oneShotBuffer SetPan 0"};
}

/// The sample loops while a new voice is made ready.
Told voiceReplaced(int index, const std::string& rate = "0", const std::string& volume = "90") {
  return {"oneShotBuffer SetCurrentPosition 0",
          "oneShotBuffer Play 1",
          "voice release",
          "voice create",
          "voice Rate " + rate,
          "voice Voice " + std::to_string(index),
          "voice Volume " + volume,
          "say  ",
          "oneShotBuffer Stop"};
}

/// An echo with what it does to the rate.
Told echoedWithRate(const std::string& character) {
  return {"purge", "voice Rate 5", "purge", "queue " + character, "voice Rate 0"};
}

TEST(ChangeVoice, StartsFromTheFirstVoiceAndEnterTakesIt) {
  Dialogue dialogue(" change voice ");
  dialogue.session.folder.write(kFile, "2\r\n0\r\n90\r\n0\r\n");
  EXPECT_EQ(dialogue.play(keys("Enter"), kEverything),
            taken() + sampleLoaded() + voiceReplaced(0) + kQuestion + taken() + kSaved);
  EXPECT_EQ(dialogue.file(kFile), "0\r\n0\r\n90\r\n0\r\n");
}

TEST(ChangeVoice, NoGoesToTheNextVoiceAndAfterTheLastToTheFirst) {
  Dialogue dialogue(" change voice ");
  const std::string no = "wait say do you wish\nwait 20\ntap N\n";
  const Told next = echoedWithRate("n");
  EXPECT_EQ(dialogue.play(no + no + no + no + "wait say do you wish\nwait 20\ntap Y\n", kEverything),
            taken() + sampleLoaded() + voiceReplaced(0) + kQuestion + next + voiceReplaced(1) + kQuestion +
                next + voiceReplaced(2) + kQuestion + next + voiceReplaced(0) + kQuestion + next +
                voiceReplaced(1) + kQuestion + echoedWithRate("y") + kSaved);
  EXPECT_EQ(dialogue.file(kFile), "1\r\n0\r\n90\r\n0\r\n");
}

TEST(ChangeVoice, ThePausesAroundANewVoiceAreThese) {
  Dialogue dialogue(" change voice ");
  const Told told = dialogue.play(
      "wait say do you wish\nwait 20\ntap N\nwait say do you wish\nwait 20\ntap Y\n", kEverything);
  const auto at = [&](const std::string& line, int which) {
    for (std::size_t i = 0; i < told.size(); ++i) {
      if (told[i] == line && --which == 0) return dialogue.moments()[i];
    }
    return -1;
  };
  EXPECT_EQ(at("oneShotBuffer Play 1", 2) - at("queue n", 1), 101);
  EXPECT_EQ(at(kQuestion[0], 2) - at("oneShotBuffer Stop", 2), 201 + 3);
}

TEST(ChangeVoice, TheChosenVoiceSpeaksAtOnceAndAtTheNextStart) {
  Dialogue dialogue(" change voice ");
  dialogue.session.folder.write(kFile, "0\r\n4\r\n70\r\n0\r\n");
  dialogue.play(
      "wait say do you wish\nwait 20\ntap N\nwait say do you wish\nwait 20\ntap N\nwait say do you "
      "wish\nwait 20\ntap Enter\n");
  const TraceLine said = dialogue.trace().of("speak").back();
  EXPECT_EQ(said.at("text"), " adjust rate of speech ");
  EXPECT_EQ(said.at("voice"), 2);
  EXPECT_EQ(said.at("rate"), 4);
  EXPECT_EQ(said.at("volume"), 70);

  Session nextDay;
  nextDay.folder.write(kFile, dialogue.file(kFile));
  nextDay.script(atMainMenu());
  EXPECT_THAT(nextDay.run().voice(), ElementsAre("create", "Voice 2", "Volume 70", "Rate 4"));
}

TEST(ChangeVoice, WithOneVoiceNoComesBackToIt) {
  Dialogue dialogue(" change voice ");
  dialogue.session.options.voices = 1;
  EXPECT_EQ(dialogue.play("wait say do you wish\nwait 20\ntap N\nwait say do you wish\nwait 20\ntap Enter\n",
                          kEverything),
            taken() + sampleLoaded() + voiceReplaced(0) + kQuestion + echoedWithRate("n") + voiceReplaced(0) +
                kQuestion + taken() + kSaved);
}

TEST(ChangeVoice, WithTwoVoicesItAsksNothingButSaves) {
  Dialogue dialogue(" change voice ");
  dialogue.session.options.voices = 2;
  dialogue.session.folder.write(kFile, "1\r\n2\r\n60\r\n-300\r\n");
  EXPECT_EQ(dialogue.play("", kEverything), taken() + sampleLoaded() + kSaved);
  EXPECT_EQ(dialogue.file(kFile), "1\r\n2\r\n60\r\n0\r\n");
}

TEST(ChangeVoice, TheSampleIsALittleQuieterThanTheSoundsAndPickedByChance) {
  for (const std::uint64_t seed : {2, 3, 71}) {
    Dialogue dialogue(" change voice ");
    dialogue.session.options.seed = seed;
    dialogue.scriptBeforeChoice = "set soundVolume -3500\n";
    EXPECT_EQ(dialogue.play(keys("Enter"), {"sound"}),
              (sampleLoaded(seed, "-4000") +
               Told{"oneShotBuffer SetCurrentPosition 0", "oneShotBuffer Play 1", "oneShotBuffer Stop"}));
  }
}

TEST(ChangeVoice, AVolumeThatNoVoiceHasLeavesTheVoiceItsOwn) {
  Dialogue dialogue(" change voice ");
  dialogue.session.folder.write(kFile, "0\r\n0\r\n500\r\n0\r\n");
  EXPECT_EQ(dialogue.play(keys("Enter"), {"voice"}),
            (Told{"voice release", "voice create", "voice Rate 0", "voice Voice 0"}));
  EXPECT_EQ(dialogue.file(kFile), "0\r\n0\r\n500\r\n0\r\n");
}

struct AnswerCase {
  const char* keys;
  Told told;  ///< after the question
};

void PrintTo(const AnswerCase& c, std::ostream* out) {
  *out << c.keys;
}

class AcceptVoice : public ::testing::TestWithParam<AnswerCase> {};

TEST_P(AcceptVoice, Answers) {
  const auto& [pressed, told] = GetParam();
  Dialogue dialogue(" change voice ");
  EXPECT_EQ(dialogue.play(keys(pressed)), taken() + Told{"say  "} + kQuestion + told);
  EXPECT_EQ(dialogue.file(kFile), "0\r\n0\r\n90\r\n0\r\n");
}

INSTANTIATE_TEST_SUITE_P(
    Keys, AcceptVoice,
    ::testing::Values(AnswerCase{"Enter", taken()},  //
                      AnswerCase{"Y", echoed("y")},
                      AnswerCase{"Up Down Enter", taken(" no ") + taken(" yes ") + taken()},
                      AnswerCase{"Down F1 Enter", taken(" no ") + taken() + kQuestion + taken()},
                      AnswerCase{"Down X Enter", taken(" no ") + echoed("x") + kQuestion + taken()},
                      AnswerCase{"Escape Y", echoed("\x1b") + kQuestion + echoed("y")}));

// The rate of speech.

const Told kRatePrompt = {"queue to adjust the speech rate, use the arrow keys and then press enter"};

TEST(AdjustRate, ArrowsChangeItAndEnterSaves) {
  Dialogue dialogue(" adjust rate of speech ");
  EXPECT_EQ(dialogue.play(keys("Up Up Down Down Down Enter"), kEverything),
            (Told{"voice Rate 0"} + kRatePrompt +
             Told{"queue 0",                               //
                  "voice Rate 1", "purge", "queue 1",      //
                  "voice Rate 2", "purge", "queue 2",      //
                  "voice Rate 1", "purge", "queue 1",      //
                  "voice Rate 0", "purge", "queue 0",      //
                  "voice Rate -1", "purge", "queue -1"} +  //
             kSaved));
  EXPECT_EQ(dialogue.file(kFile), "0\r\n-1\r\n90\r\n0\r\n");
  EXPECT_EQ(dialogue.trace().of("speak").back().at("rate"), -1);
}

TEST(AdjustRate, AnyOtherKeyAsksAgainAndKeepsTheRate) {
  for (const char* key : {"F1", "Escape", "X", "Y", "N", "Space"}) {
    Dialogue dialogue(" adjust rate of speech ");
    EXPECT_EQ(dialogue.play(keys(std::string("Up ") + key + " Enter"), kEverything),
              (Told{"voice Rate 0"} + kRatePrompt +
               Told{"queue 0", "voice Rate 1", "purge", "queue 1", "voice Rate 1"} + kRatePrompt +
               Told{"queue 1"} + kSaved))
        << key;
  }
}

TEST(AdjustRate, HasNoLimits) {
  Dialogue fast(" adjust rate of speech ");
  fast.session.folder.write(kFile, "0\r\n40\r\n90\r\n0\r\n");
  EXPECT_EQ(fast.play(keys("Up Enter"), {"voice"}), (Told{"voice Rate 40", "voice Rate 41"}));

  Dialogue slow(" adjust rate of speech ");
  slow.session.folder.write(kFile, "0\r\n-40\r\n90\r\n0\r\n");
  EXPECT_EQ(slow.play(keys("Down Enter"), {"voice"}), (Told{"voice Rate -40", "voice Rate -41"}));
  EXPECT_EQ(slow.file(kFile), "0\r\n-41\r\n90\r\n0\r\n");
}

TEST(AdjustRate, TheLargestNumberStaysWhereItIs) {
  Dialogue dialogue(" adjust rate of speech ");
  dialogue.session.folder.write(kFile, "0\r\n2147483647\r\n90\r\n0\r\n");
  EXPECT_EQ(dialogue.play(keys("Up Enter"), {"voice"}),
            (Told{"voice Rate 2147483647", "voice Rate 2147483647"}));
}

TEST(AdjustRate, IsRestoredAtTheNextStart) {
  Dialogue dialogue(" adjust rate of speech ");
  dialogue.play(keys("Up Up Up Enter"));
  dialogue.play(keys("Enter"));
  EXPECT_THAT(dialogue.trace().voice(), ElementsAre("create", "Voice 0", "Volume 90", "Rate 3", "Rate 3"));
}

// The volumes.

const Told kVoicePrompt = {
    "queue  use the up and down arrow keys to raise and lower the volume of the voice.   Press enter when "
    "you have the volume set the way that you want it. "};
const Told kSoundsPrompt = {
    "queue  use the up and down arrow keys to adjust the volume of the sounds.   Press enter when you have "
    "the volume set the way that you want it. "};

const Told kSampleHeard = {"oneShotBuffer create vorn7.wav", "oneShotBuffer SetCurrentPosition 0",
                           "oneShotBuffer SetVolume 0",      "oneShotBuffer SetFrequency 22051",
                           "oneShotBuffer Play 0",           "oneShotBuffer Stop"};
const Told kSampleReleased = {"oneShotBuffer Stop", "oneShotBuffer release"};
/// From the voice's part to where the sounds' part listens.
const std::string kSoundsListen = "wait say of the sounds.\nwait 20\n";

Told soundsStep(const std::string& word, int volume) {
  return {"purge",
          "queue " + word,
          "oneShotBuffer SetCurrentPosition 0",
          "oneShotBuffer SetVolume " + std::to_string(volume),
          "oneShotBuffer Play 0",
          "oneShotBuffer Stop"};
}

TEST(AdjustVolume, EnterTwiceLeavesBothAndSaves) {
  Dialogue dialogue(" adjust volume ");
  EXPECT_EQ(dialogue.play(keys("Enter") + kSoundsListen + keys("Enter"), kEverything),
            kVoicePrompt + taken() + kSampleHeard + kSoundsPrompt + taken() + kSampleReleased + kSaved);
  EXPECT_EQ(dialogue.file(kFile), "0\r\n0\r\n90\r\n0\r\n");
}

TEST(AdjustVolume, TheSampleSoundsForOneAndAHalfSeconds) {
  Dialogue dialogue(" adjust volume ");
  dialogue.play(keys("Enter") + kSoundsListen + keys("Enter"), {"sound"});
  EXPECT_EQ(dialogue.moments()[5] - dialogue.moments()[4], 1501);
}

TEST(AdjustVolume, TheVoiceSaysWhenItReachesAnEnd) {
  Dialogue loud(" adjust volume ");
  loud.session.folder.write(kFile, "0\r\n0\r\n90\r\n0\r\n");
  EXPECT_EQ(loud.play(keys("Up Up Up Down Enter") + kSoundsListen + keys("Enter"), {"speak", "voice"}),
            (kVoicePrompt +
             Told{"purge", "voice Volume 95", "queue  louder ",    //
                  "purge", "voice Volume 100", "queue  maximum ",  //
                  "purge", "voice Volume 100", "queue  maximum ",  //
                  "purge", "voice Volume 95", "queue  quieter "} +
             taken() + kSoundsPrompt + taken()));
  EXPECT_EQ(loud.file(kFile), "0\r\n0\r\n95\r\n0\r\n");

  Dialogue quiet(" adjust volume ");
  quiet.session.folder.write(kFile, "0\r\n0\r\n10\r\n0\r\n");
  EXPECT_EQ(quiet.play(keys("Down Down Down Up Enter") + kSoundsListen + keys("Enter"), {"speak", "voice"}),
            (kVoicePrompt +
             Told{"purge", "voice Volume 5", "queue  quieter ",  //
                  "purge", "voice Volume 0", "queue  minimum ",  //
                  "purge", "voice Volume 0", "queue  minimum ",  //
                  "purge", "voice Volume 5", "queue  louder "} +
             taken() + kSoundsPrompt + taken()));
}

TEST(AdjustVolume, From95TheMaximumIsOneStep) {
  Dialogue dialogue(" adjust volume ");
  dialogue.session.folder.write(kFile, "0\r\n0\r\n95\r\n0\r\n");
  EXPECT_EQ(dialogue.play(keys("Up Up Enter") + kSoundsListen + keys("Enter")),
            kVoicePrompt + taken(" maximum ") + taken(" maximum ") + taken() + kSoundsPrompt + taken());
  EXPECT_EQ(dialogue.file(kFile), "0\r\n0\r\n100\r\n0\r\n");
}

TEST(AdjustVolume, AVolumeThatNoVoiceHasComesBackIntoRange) {
  struct {
    const char* saved;
    const char* key;
    const char* volume;
    const char* word;
  } const cases[] = {{"500", "Down", "100", " quieter "},      {"500", "Up", "100", " maximum "},
                     {"-50", "Up", "0", " louder "},           {"-50", "Down", "0", " minimum "},
                     {"2147483647", "Up", "100", " maximum "}, {"-2147483647", "Down", "0", " minimum "}};
  for (const auto& c : cases) {
    Dialogue dialogue(" adjust volume ");
    dialogue.session.folder.write(kFile, std::string("0\r\n0\r\n") + c.saved + "\r\n0\r\n");
    EXPECT_EQ(dialogue.play(keys(std::string(c.key) + " Enter") + kSoundsListen + keys("Enter")),
              kVoicePrompt + taken(c.word) + taken() + kSoundsPrompt + taken())
        << c.saved << " " << c.key;
    EXPECT_EQ(dialogue.file(kFile), std::string("0\r\n0\r\n") + c.volume + "\r\n0\r\n");
  }
}

TEST(AdjustVolume, OtherKeysAskAgainInBothParts) {
  Dialogue dialogue(" adjust volume ");
  const std::string others = keys("F1 X Escape Y N Enter");
  const auto askedAgain = [](const Told& prompt) {
    return taken() + prompt + echoed("x") + prompt + echoed("\x1b") + prompt + echoed("y") + prompt +
           echoed("n") + prompt + taken();
  };
  EXPECT_EQ(dialogue.play(others + kSoundsListen + others),
            kVoicePrompt + askedAgain(kVoicePrompt) + kSoundsPrompt + askedAgain(kSoundsPrompt));
}

TEST(AdjustVolume, EachStepOfTheSoundsPlaysTheSampleToItsEnd) {
  Dialogue dialogue(" adjust volume ");
  EXPECT_EQ(
      dialogue.play(keys("Enter") + kSoundsListen + "tap Down\nwait 5000\ntap Up\nwait 5000\ntap Enter\n",
                    kEverything),
      kVoicePrompt + taken() + kSampleHeard + kSoundsPrompt +  //
          taken() + soundsStep(" quieter ", -100) +            //
          taken() + soundsStep(" maximum ", 0) + taken() +     //
          kSampleReleased + kSaved);
}

TEST(AdjustVolume, ASampleComesAfterTheWord) {
  Dialogue dialogue(" adjust volume ");
  dialogue.play(keys("Enter") + kSoundsListen + "tap Down\nwait 5000\ntap Enter\n", kEverything);
  const auto& ms = dialogue.moments();
  const std::size_t word = 1 + 1 + kSampleHeard.size() + 1 + 2;
  EXPECT_EQ(ms[word + 1] - ms[word], 3 + 201) << "the keys are forgotten, and 0.2 s";
}

TEST(AdjustVolume, AKeyDuringTheSampleIsHandledAtOnce) {
  Dialogue dialogue(" adjust volume ");
  const Told told = dialogue.play(
      keys("Enter") + kSoundsListen + "tap Down\nwait 300\ntap Down\nwait 300\ntap Enter\n", kEverything);
  EXPECT_EQ(told, kVoicePrompt + taken() + kSampleHeard + kSoundsPrompt +                        //
                      taken() + soundsStep(" quieter ", -100) + soundsStep(" quieter ", -200) +  //
                      kSampleReleased + kSaved);
  EXPECT_EQ(dialogue.file(kFile), "0\r\n0\r\n90\r\n-200\r\n");
}

TEST(AdjustVolume, TheSoundsReachTheirQuietestAsQuieterAndRefuseOnlyBeyond) {
  Dialogue dialogue(" adjust volume ");
  dialogue.scriptBeforeChoice = "set soundVolume -3400\n";
  const std::string slowly = "wait 5000\n";
  dialogue.play(keys("Enter") + kSoundsListen + "tap Down\n" + slowly + "tap Down\n" + slowly + "tap Up\n" +
                slowly + "tap Enter\n");
  Told words;
  for (const std::string& text : dialogue.trace().spoken()) {
    if (text == " quieter " || text == " minimum " || text == " louder ") words.push_back(text);
  }
  EXPECT_THAT(words, ElementsAre(" quieter ", " minimum ", " louder "));
  EXPECT_EQ(dialogue.file(kFile), "0\r\n0\r\n90\r\n-3400\r\n");
}

TEST(AdjustVolume, TheSoundsSayTheirMaximumOnReachingIt) {
  Dialogue dialogue(" adjust volume ");
  dialogue.scriptBeforeChoice = "set soundVolume -200\n";
  EXPECT_EQ(dialogue
                .play(keys("Enter") + kSoundsListen + keys("Up") + "wait 5000\n" + keys("Up") +
                          "wait 5000\n" + keys("Up") + "wait 5000\n" + keys("Enter"),
                      {"sound"})
                .size(),
            6u + 3 * 4 + 2);
  Told words;
  for (const std::string& text : dialogue.trace().spoken()) {
    if (text == " maximum " || text == " louder ") words.push_back(text);
  }
  EXPECT_THAT(words, ElementsAre(" louder ", " maximum ", " maximum "));
}

TEST(AdjustVolume, OfTheSoundsIsSavedButEveryStartIsLoud) {
  Dialogue dialogue(" adjust volume ");
  dialogue.play(keys("Enter") + kSoundsListen + keys("Down") + "wait 5000\n" + keys("Enter"));
  EXPECT_EQ(dialogue.file(kFile), "0\r\n0\r\n90\r\n-100\r\n");
  dialogue.scriptBeforeChoice = "get soundVolume\n";
  dialogue.play(keys("Enter") + kSoundsListen + keys("Enter"));
  EXPECT_THAT(dialogue.answers("soundVolume"), ElementsAre("0"));
  EXPECT_EQ(dialogue.file(kFile), "0\r\n0\r\n90\r\n0\r\n");
}

}  // namespace
}  // namespace vorn
