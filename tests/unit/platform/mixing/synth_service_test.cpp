#include "platform/mixing/synth_service.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>

#include "platform/common/espeak_synth.h"
#include "platform/mixing/mixer.h"
#include "unit/platform/mixing/signals.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using vorn::test::peak;
using vorn::test::rms;
using vorn::test::Signal;

const std::string kLongText = [] {
  std::string text;
  for (int i = 0; i < 8; ++i) {
    text += "The quick brown fox jumps over the lazy dog. ";
  }
  return text;
}();

class SynthServiceTest : public testing::Test {
 protected:
  /// The next milliseconds of sound, one side.
  Signal hear(int ms) {
    std::vector<float> interleaved(static_cast<std::size_t>(ms) * 96);
    mixer.render(interleaved.data(), ms * 48);
    Signal left;
    for (std::size_t i = 0; i < interleaved.size(); i += 2) {
      left.push_back(interleaved[i]);
    }
    return left;
  }
  static bool waitFor(const std::function<bool()>& condition) {
    const auto limit = std::chrono::steady_clock::now() + 60s;
    while (!condition()) {
      if (std::chrono::steady_clock::now() > limit) {
        return false;
      }
      std::this_thread::sleep_for(1ms);
    }
    return true;
  }
  /// Waits until the synthesiser has something ready to be heard.
  bool isReady() {
    return waitFor([this] { return mixer.voice().isSpeaking(); });
  }
  /// Plays, faster than real time, until the service is silent or `most` samples have
  /// been heard. Returns them without the silence in which the synthesiser was waited for.
  Signal hearAll(std::size_t most = SIZE_MAX) {
    Signal all;
    EXPECT_TRUE(waitFor([&] {
      while (mixer.voice().isSpeaking() && all.size() < most) {
        const Signal piece = hear(1);
        all.insert(all.end(), piece.begin(), piece.end());
      }
      return !service.isSpeaking() || all.size() >= most;
    }));
    return all;
  }

  Mixer mixer;
  EspeakSynth synth;
  SynthService service{synth, mixer.voice()};
};

TEST_F(SynthServiceTest, SpeaksFromTheRequestToTheLastSample) {
  EXPECT_FALSE(service.isSpeaking());
  service.say(" Exit Game. ", {});
  EXPECT_TRUE(service.isSpeaking());
  ASSERT_TRUE(isReady());
  // All has been synthesised long before it has been heard.
  std::this_thread::sleep_for(50ms);
  EXPECT_GT(rms(hearAll(300 * 48)), 0.01);
  EXPECT_TRUE(service.isSpeaking());
  hearAll();
  EXPECT_EQ(peak(hear(100)), 0);
  EXPECT_FALSE(service.isSpeaking());
}

TEST_F(SynthServiceTest, BetweenRequestAndFirstSampleItIsNeverSilent) {
  for (int i = 0; i < 200; ++i) {
    service.say("one", {});
    bool wasSilent = false;
    while (!mixer.voice().isSpeaking()) {
      wasSilent |= !service.isSpeaking();
    }
    EXPECT_FALSE(wasSilent) << i;
    service.purge();
    hear(10);
  }
}

TEST_F(SynthServiceTest, TextsFollowEachOther) {
  service.say("one", {});
  const double one = static_cast<double>(hearAll().size());
  service.say("one", {});
  service.say("one", {});
  service.say("one", {});
  EXPECT_NEAR(static_cast<double>(hearAll().size()), 3 * one, one / 2);
}

TEST_F(SynthServiceTest, EachTextKeepsTheSettingsOfItsRequest) {
  service.say("The quick brown fox", {.rate = 0});
  const double slow = static_cast<double>(hearAll().size());
  service.say("The quick brown fox", {.volume = 0, .rate = 10});
  const Signal fast = hearAll();
  EXPECT_NEAR(static_cast<double>(fast.size()) / slow, 1 / 3.0, 0.1);
  EXPECT_EQ(peak(fast), 0);
}

TEST_F(SynthServiceTest, LongTextsWaitForRoomAndAreHeardWhole) {
  const double seconds = [this] {
    std::size_t samples = 0;
    synth.speak(kLongText, {}, [&](std::span<const std::int16_t> piece) {
      samples += piece.size();
      return true;
    });
    return static_cast<double>(samples) / synth.sampleRate();
  }();
  ASSERT_GT(seconds * synth.sampleRate(), 4.0 * VoiceStream::kCapacity);
  service.say(kLongText, {});
  EXPECT_NEAR(static_cast<double>(hearAll().size()) / Mixer::kRate, seconds, 0.5);
}

TEST_F(SynthServiceTest, APurgeIsHeardWithinTenMilliseconds) {
  service.say(kLongText, {});
  service.say("and more", {});
  ASSERT_TRUE(isReady());
  hear(500);
  service.purge();
  EXPECT_FALSE(service.isSpeaking());
  hear(10);
  EXPECT_EQ(peak(hear(500)), 0);
  std::this_thread::sleep_for(30ms);
  EXPECT_EQ(peak(hear(500)), 0);
  EXPECT_FALSE(service.isSpeaking());
}

TEST_F(SynthServiceTest, AfterAPurgeTheNextTextIsHeardAtOnce) {
  for (int i = 0; i < 50; ++i) {
    service.say(kLongText, {});
    if (i % 2 == 0) {
      ASSERT_TRUE(isReady());
      hear(20);
    }
    service.purge();
    service.say("one", {});
    EXPECT_TRUE(service.isSpeaking());
    EXPECT_TRUE(waitFor([this] { return peak(hear(1)) > 0.05; })) << i;
    service.purge();
    hear(10);
  }
}

TEST_F(SynthServiceTest, BlankTextsEnd) {
  for (const char* text : {" ", "", ".", "\x1B"}) {
    service.say(text, {});
    EXPECT_LT(hearAll().size(), 48000U / 5);
  }
}

TEST_F(SynthServiceTest, AVoiceThatIsNotThereIsPassedOver) {
  service.say("one", {.voice = 100000});
  service.say("two", {});
  EXPECT_GT(peak(hearAll()), 0.1);
}

TEST_F(SynthServiceTest, EndsInTheMiddleOfALongText) {
  auto own = std::make_unique<SynthService>(synth, mixer.voice());
  own->say(kLongText, {});
  ASSERT_TRUE(isReady());
  own.reset();
  hear(10);
  EXPECT_EQ(peak(hear(500)), 0);
}

TEST(SynthServicePatience, WithoutASoundDeviceTheVoiceIsGivenUp) {
  Mixer mixer;
  EspeakSynth synth;
  constexpr auto kPatience = 1s;
  SynthService service(synth, mixer.voice(), kPatience);
  service.say("one", {});
  testing::internal::CaptureStderr();
  const auto start = std::chrono::steady_clock::now();
  while (service.isSpeaking() && std::chrono::steady_clock::now() < start + 60s) {
    std::this_thread::sleep_for(1ms);
  }
  EXPECT_FALSE(service.isSpeaking());
  EXPECT_GE(std::chrono::steady_clock::now() - start, kPatience);
  EXPECT_NE(testing::internal::GetCapturedStderr(), "");
  // Once the device is back, so is the voice.
  service.say("two", {});
  std::vector<float> sound(960);
  double loudest = 0;
  for (int i = 0; i < 3000 && service.isSpeaking(); ++i) {
    mixer.render(sound.data(), 480);
    loudest = std::max(loudest, peak(sound));
    std::this_thread::sleep_for(1ms);
  }
  EXPECT_GT(loudest, 0.1);
}

}  // namespace
}  // namespace vorn
