#include "platform/common/espeak_synth.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <set>
#include <thread>

#include "platform/errors.h"

namespace vorn {
namespace {

using Speech = std::vector<std::int16_t>;

class EspeakSynthTest : public testing::Test {
 protected:
  Speech say(const std::string& text, const SpeechSettings& settings = {}) {
    Speech speech;
    synth.speak(text, settings, [&](std::span<const std::int16_t> samples) {
      speech.insert(speech.end(), samples.begin(), samples.end());
      return true;
    });
    return speech;
  }
  double seconds(const std::string& text, const SpeechSettings& settings = {}) {
    return static_cast<double>(say(text, settings).size()) / synth.sampleRate();
  }

  EspeakSynth synth;
};

double loudness(const Speech& speech) {
  double sum = 0;
  for (const std::int16_t sample : speech) {
    sum += static_cast<double>(sample) * sample;
  }
  return speech.empty() ? 0 : std::sqrt(sum / static_cast<double>(speech.size()));
}

bool isEnglish(const std::string& name) {
  return name.starts_with("English");
}

TEST_F(EspeakSynthTest, ListsTheVoicesEnglishFirstWithoutVariants) {
  const auto& voices = synth.voices();
  ASSERT_GE(voices.size(), 100U);
  EXPECT_EQ(synth.problem(), "");
  EXPECT_EQ(voices[0], "English (America)");
  const auto firstOther = std::find_if_not(voices.begin(), voices.end(), isEnglish);
  EXPECT_GE(firstOther - voices.begin(), 2);
  EXPECT_EQ(std::find_if(firstOther, voices.end(), isEnglish), voices.end());
  for (const std::string& name : voices) {
    EXPECT_EQ(name.find('+'), std::string::npos) << name;
  }
}

TEST_F(EspeakSynthTest, ASecondOneSharesTheLibrary) {
  for (int i = 0; i < 20; ++i) {
    EspeakSynth other;
    EXPECT_EQ(other.voices(), synth.voices());
    EXPECT_EQ(other.sampleRate(), synth.sampleRate());
  }
  EXPECT_GT(seconds(" Exit Game. "), 0.3);
}

TEST_F(EspeakSynthTest, TheSpeedGoesByPowersOfThree) {
  EXPECT_EQ(wordsAMinute(0), 175);
  EXPECT_EQ(wordsAMinute(10), 525);
  EXPECT_EQ(wordsAMinute(5), 303);
  EXPECT_EQ(wordsAMinute(-5), 101);
  const std::string text = " The next sound that you hear will come out of the left speaker. ";
  const double normal = seconds(text);
  for (const int rate : {-5, 5, 10, 15}) {
    EXPECT_NEAR(seconds(text, {.rate = rate}) / normal, std::pow(3.0, -rate / 10.0), 0.15) << rate;
  }
}

TEST_F(EspeakSynthTest, RatesBeyondTheLimitsAreHeldThere) {
  EXPECT_EQ(wordsAMinute(-11), 80);
  EXPECT_EQ(wordsAMinute(-1000000), 80);
  EXPECT_EQ(wordsAMinute(15), 900);
  EXPECT_EQ(wordsAMinute(1000000), 900);
  EXPECT_NEAR(seconds("one two three", {.rate = 5000}), seconds("one two three", {.rate = 15}), 0.05);
}

TEST_F(EspeakSynthTest, TheVolumeScalesWithoutClipping) {
  const Speech full = say(" Ladies and Gentlemen, start your engines. ");
  const double half = loudness(say(" Ladies and Gentlemen, start your engines. ", {.volume = 50}));
  EXPECT_NEAR(half / loudness(full), 0.5, 0.05);
  EXPECT_EQ(loudness(say("hello", {.volume = 0})), 0);
  EXPECT_LT(*std::max_element(full.begin(), full.end()), 32767);
  EXPECT_GT(*std::max_element(full.begin(), full.end()), 12000);
}

TEST_F(EspeakSynthTest, EachVoiceSpeaks) {
  for (int voice = 0; voice < static_cast<int>(synth.voices().size()); ++voice) {
    EXPECT_GT(loudness(say("Exit Game.", {.voice = voice})), 50)
        << synth.voices()[static_cast<std::size_t>(voice)];
  }
  // The same voice takes the same time again, another one another time.
  const double american = seconds("Exit Game.", {.voice = 0});
  EXPECT_GT(std::abs(seconds("Exit Game.", {.voice = 40}) - american), 0.02);
  EXPECT_NEAR(seconds("Exit Game.", {.voice = 0}), american, 0.005);
  EXPECT_THROW(say("hello", {.voice = -1}), PlatformError);
  EXPECT_THROW(say("hello", {.voice = static_cast<int>(synth.voices().size())}), PlatformError);
}

TEST_F(EspeakSynthTest, ControlCharactersCountAsBlanks) {
  const double plain = seconds("lap 3");
  EXPECT_NEAR(seconds(std::string("lap\x00 3\x01\x7F\x81", 9)), plain, 0.02);
  EXPECT_NEAR(seconds("lap\r\n3"), plain, 0.02);
  EXPECT_LT(seconds("\x1B\x08\x0D"), 0.1);
}

TEST_F(EspeakSynthTest, LettersBeyondAsciiAreSpoken) {
  EXPECT_GT(loudness(say("\xE9")), 50);               // an e with an acute accent
  EXPECT_NE(say("M\xFCller"), say("M\xC3\xBCller"));  // one byte a letter, not two
}

TEST_F(EspeakSynthTest, NothingIsReadAsMarkup) {
  EXPECT_GT(seconds("<b>lap</b>"), seconds("lap"));
  EXPECT_GT(seconds("[[h@l'oU]]"), 1.5 * seconds("hello"));
}

TEST_F(EspeakSynthTest, BeginsAtOnceHoweverTheFirstLetterIsSpoken) {
  constexpr int kHeard = 8;
  for (const std::string text :
       {" change voice ", " Check speakers ", " configure key board ", " Exit Game. "}) {
    const Speech speech = say(text);
    ASSERT_FALSE(speech.empty()) << text;
    EXPECT_GT(std::abs(speech.front()), kHeard) << text;
  }
}

TEST_F(EspeakSynthTest, KeepsItsTimeWhereNothingIsHeard) {
  const double loud = seconds("The quick brown fox");
  EXPECT_NEAR(seconds("The quick brown fox", {.volume = 0}), loud, 0.1);
}

TEST_F(EspeakSynthTest, BlankTextsEndAtOnce) {
  EXPECT_LT(seconds(""), 0.1);
  EXPECT_LT(seconds(" "), 0.1);
}

TEST_F(EspeakSynthTest, ASinkThatWantsNoMoreEndsIt) {
  std::string longText;
  for (int i = 0; i < 200; ++i) {
    longText += "The quick brown fox jumps over the lazy dog. ";
  }
  std::size_t pieces = 0, samples = 0;
  synth.speak(longText, {}, [&](std::span<const std::int16_t> piece) {
    samples += piece.size();
    return ++pieces < 3;
  });
  EXPECT_EQ(pieces, 3U);
  EXPECT_LT(samples, 3U * 22050 / 10);
  EXPECT_GT(seconds("one two three"), 0.5);  // and the next text is whole again
}

TEST_F(EspeakSynthTest, TwoThreadsTakeTurns) {
  std::atomic<int> spoken = 0;
  const auto speaker = [&] {
    EspeakSynth own;
    for (int i = 0; i < 20; ++i) {
      std::size_t count = 0;
      own.speak("lap 3", {}, [&](std::span<const std::int16_t> samples) {
        count += samples.size();
        return true;
      });
      spoken += count > 5000;
    }
  };
  std::thread one(speaker), other(speaker);
  one.join();
  other.join();
  EXPECT_EQ(spoken, 40);
}

}  // namespace
}  // namespace vorn
