#include "platform/common/service_voice.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/common/espeak_synth.h"
#include "platform/errors.h"
#include "platform/mixing/mixer.h"
#include "platform/mixing/synth_service.h"

namespace vorn {
namespace {

class ServiceVoiceTest : public testing::Test {
 protected:
  std::unique_ptr<ServiceVoice> makeVoice(bool introducesItself = false) {
    return std::make_unique<ServiceVoice>(
        service, settings, introducesItself, [this] { return pause(); },
        [this](const std::string& text) { captions.push_back(text); });
  }
  bool pause() {
    hear(10);
    pausedMs += 10;
    return pausedMs < cutAfterMs;
  }
  void hear(int ms) {
    std::vector<float> sound(static_cast<std::size_t>(ms) * 96);
    mixer.render(sound.data(), ms * 48);
    std::this_thread::sleep_for(std::chrono::microseconds(100));
  }
  /// Milliseconds of sound until the voice is idle, without those in which the
  /// synthesiser was waited for.
  int hearOut(Voice& spoken) {
    int ms = 0;
    while (spoken.RunningState() == Voice::kSpeaking && ms < 60000) {
      const bool sounds = mixer.voice().isSpeaking();
      hear(1);
      if (sounds) ++ms;
    }
    return ms;
  }

  Mixer mixer;
  EspeakSynth synth;
  SpeechSettings settings;
  SynthService service{synth, mixer.voice()};
  std::vector<std::string> captions;
  int pausedMs = 0, cutAfterMs = 1000000;
};

TEST_F(ServiceVoiceTest, ASynchronousTextReturnsWhenEverythingHasBeenSaid) {
  auto voice = makeVoice();
  voice->Speak("one two three four five", speak_flags::kQueue);
  EXPECT_EQ(pausedMs, 0);
  voice->Speak("six", speak_flags::kSynchronous);
  EXPECT_GT(pausedMs, 1500);
  EXPECT_NE(voice->RunningState(), Voice::kSpeaking);
}

TEST_F(ServiceVoiceTest, APurgeSilencesAndAnEmptyOneSaysNothing) {
  auto voice = makeVoice();
  voice->Speak("one two three four five", speak_flags::kQueue);
  hear(100);
  EXPECT_EQ(voice->RunningState(), Voice::kSpeaking);
  voice->Speak("", speak_flags::kPurge);
  EXPECT_NE(voice->RunningState(), Voice::kSpeaking);
  voice->Speak("one two three four five", speak_flags::kQueue);
  voice->Speak("six", speak_flags::kPurge);
  EXPECT_EQ(voice->RunningState(), Voice::kSpeaking);
  EXPECT_LT(hearOut(*voice), 1000);
}

TEST_F(ServiceVoiceTest, SettingsAreThoseOfTheCall) {
  auto voice = makeVoice();
  voice->setRate(10);
  voice->Speak("The quick brown fox jumps over the lazy dog", speak_flags::kQueue);
  voice->setRate(0);
  const int fast = hearOut(*voice);
  voice->Speak("The quick brown fox jumps over the lazy dog", speak_flags::kQueue);
  EXPECT_NEAR(static_cast<double>(hearOut(*voice)) / fast, 3, 1);
}

TEST_F(ServiceVoiceTest, AnyRateIsTakenOtherSettingsHaveLimits) {
  auto voice = makeVoice();
  EXPECT_NO_THROW(voice->setRate(1000));
  EXPECT_NO_THROW(voice->setRate(-1000));
  EXPECT_THROW(voice->setVolume(101), PlatformError);
  EXPECT_THROW(voice->setVolume(-1), PlatformError);
  EXPECT_THROW(voice->setVoice(-1), PlatformError);
  EXPECT_THROW(voice->setVoice(static_cast<int>(voice->GetVoices().size())), PlatformError);
  EXPECT_NO_THROW(voice->setVoice(static_cast<int>(voice->GetVoices().size()) - 1));
  EXPECT_THROW(voice->Speak("one", 3), PlatformError);
}

TEST_F(ServiceVoiceTest, ReleasedItIsSilentAndMadeAgainItSpeaks) {
  for (int i = 0; i < 5; ++i) {
    auto voice = makeVoice();
    voice->Speak("one two three", speak_flags::kQueue);
    hear(50);
    voice.reset();
    EXPECT_FALSE(service.isSpeaking());
  }
  auto voice = makeVoice();
  voice->Speak("one two three", speak_flags::kQueue);
  EXPECT_GT(hearOut(*voice), 500);
}

TEST_F(ServiceVoiceTest, WhoWantsOutCutsASynchronousText) {
  auto voice = makeVoice();
  cutAfterMs = 200;
  voice->Speak("one two three four five six seven eight nine ten", speak_flags::kSynchronous);
  EXPECT_LE(pausedMs, 200);
  EXPECT_NE(voice->RunningState(), Voice::kSpeaking);
}

TEST_F(ServiceVoiceTest, CaptionsShowWhatIsSaidInUtf8) {
  auto voice = makeVoice();
  voice->Speak(" Exit Game. ", speak_flags::kQueue);
  voice->Speak("", speak_flags::kPurge);
  voice->Speak("  ", speak_flags::kQueue);
  voice->Speak(" By M\xFCller ", speak_flags::kSynchronous);
  EXPECT_EQ(captions, (std::vector<std::string>{" Exit Game. ", " By M\xC3\xBCller "}));
}

TEST_F(ServiceVoiceTest, CaptionsHaveNoControlCharacters) {
  makeVoice()->Speak("one\r\n\x1B[2Jtwo", speak_flags::kQueue);
  EXPECT_EQ(captions, (std::vector<std::string>{"one   [2Jtwo"}));
}

TEST_F(ServiceVoiceTest, AReplacedVoiceSaysItsNameOnceAtItsFirstBlankWithoutWaiting) {
  auto voice = makeVoice(true);
  voice->setVoice(1);
  voice->Speak(" ", speak_flags::kSynchronous);
  EXPECT_EQ(captions, (std::vector<std::string>{" " + service.voices()[1] + ". "}));
  EXPECT_EQ(voice->RunningState(), Voice::kSpeaking);
  voice->Speak(" ", speak_flags::kSynchronous);
  EXPECT_EQ(captions.size(), 1U);
  voice.reset();
  makeVoice(false)->Speak(" ", speak_flags::kSynchronous);
  EXPECT_EQ(captions.size(), 1U) << "the one of the start has no need to";
}

TEST_F(ServiceVoiceTest, ItsSettingsCanBeSeenFromOutsideAndANewOneBeginsAnew) {
  auto voice = makeVoice();
  voice->setVoice(3);
  voice->setRate(5);
  voice->setVolume(40);
  EXPECT_EQ(settings.voice, 3);
  EXPECT_EQ(settings.rate, 5);
  EXPECT_EQ(settings.volume, 40);
  voice = makeVoice();
  EXPECT_EQ(settings.voice, 0);
  EXPECT_EQ(settings.rate, 0);
  EXPECT_EQ(settings.volume, 100);
}

}  // namespace
}  // namespace vorn
