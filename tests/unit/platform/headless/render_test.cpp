#include "platform/headless/render.h"

#include <sndfile.h>

#include <cmath>
#include <numbers>

#include "unit/platform/headless/tiny_game.h"

namespace vorn {
namespace {

using testing::Each;
using testing::Gt;
using testing::HasSubstr;
using testing::SizeIs;

/// Keeps the mix in memory.
class MemorySink : public RenderSink {
 public:
  void write(std::span<const std::int16_t> more) override {
    samples.insert(samples.end(), more.begin(), more.end());
  }
  void flush() override { flushed = samples.size(); }

  std::vector<std::int16_t> samples;
  std::size_t flushed = 0;
};

enum class Side { kLeft, kRight };

class HeadlessRender : public HeadlessTest {
 protected:
  void SetUp() override {
    render = &sink;
    folder.write("tone.wav", makeWav(44100, {44100, 1, 16}, [](int frame) {
                   return 0.25 * std::sin(2 * std::numbers::pi * 441 * frame / 44100);
                 }));
  }
  /// Mean level of one side between two times, 1 being full scale.
  double level(Side side, int fromMs, int toMs) const {
    double sum = 0;
    const std::size_t from = static_cast<std::size_t>(fromMs) * 96, to = static_cast<std::size_t>(toMs) * 96;
    for (std::size_t i = from + (side == Side::kRight ? 1 : 0); i < to; i += 2) {
      sum += std::pow(sink.samples.at(i) / 32768.0, 2);
    }
    return std::sqrt(sum / (static_cast<double>(to - from) / 2));
  }

  MemorySink sink;
};

TEST_F(HeadlessRender, HasFortyEightFramesForEveryMillisecond) {
  scene([&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    EXPECT_THAT(sink.samples, SizeIs(0));
    p.yield();
    EXPECT_THAT(sink.samples, SizeIs(96));
    voice->Speak("ab", speak_flags::kSynchronous);
    EXPECT_THAT(sink.samples, SizeIs(121 * 96));
    yield(p, 9);
  });
  EXPECT_THAT(sink.samples, SizeIs(130 * 96));
  EXPECT_THAT(sink.samples, Each(0));
}

TEST_F(HeadlessRender, PlaysTheBuffersAsTheyAreToldTo) {
  scene([&](HeadlessPlatform& p) {
    const auto device = p.createSoundDevice();
    auto buffer = device->CreateSoundBufferFromFile("a", "tone.wav", 0);
    yield(p, 100);
    buffer->Play(0);
    yield(p, 100);
    buffer->SetVolume(-600);
    yield(p, 100);
    buffer->SetVolume(0);
    buffer->SetPan(-10000);
    yield(p, 100);
    buffer->Stop();
    yield(p, 100);
    buffer->SetPan(0);
    buffer->SetCurrentPosition(88200 - 8820);
    buffer->Play(0);
    yield(p, 200);
    buffer->SetFrequency(88200);
    buffer->Play(1);
    yield(p, 100);
    buffer.reset();
    yield(p, 100);
  });
  constexpr double kTone = 0.25 / std::numbers::sqrt2;
  const auto expectBoth = [&](int fromMs, int toMs, double expected) {
    EXPECT_NEAR(level(Side::kLeft, fromMs, toMs), expected, 0.002) << fromMs;
    EXPECT_NEAR(level(Side::kRight, fromMs, toMs), expected, 0.002) << fromMs;
  };
  expectBoth(0, 100, 0);
  expectBoth(120, 200, kTone);
  expectBoth(220, 300, kTone * std::pow(10, -0.3));
  EXPECT_NEAR(level(Side::kLeft, 320, 400), kTone, 0.002);
  EXPECT_LT(level(Side::kRight, 320, 400), 0.0001);
  expectBoth(420, 500, 0);
  expectBoth(520, 590, kTone);
  expectBoth(620, 700, 0);
  expectBoth(720, 800, kTone);
  expectBoth(820, 900, 0);
}

TEST_F(HeadlessRender, ABufferSoundsAtItsFrequency) {
  scene([&](HeadlessPlatform& p) {
    const auto device = p.createSoundDevice();
    const auto buffer = device->CreateSoundBufferFromFile("a", "tone.wav", 0);
    buffer->Play(1);
    yield(p, 1000);
    buffer->SetFrequency(88200);
    yield(p, 1000);
  });
  const auto risesWithin = [&](int fromMs, int toMs) {
    int rises = 0;
    for (std::size_t i = static_cast<std::size_t>(fromMs) * 96; i < static_cast<std::size_t>(toMs) * 96;
         i += 2) {
      rises += sink.samples.at(i) <= 0 && sink.samples.at(i + 2) > 0 ? 1 : 0;
    }
    return rises;
  };
  EXPECT_NEAR(risesWithin(100, 900), 441 * 8 / 10, 1);
  EXPECT_NEAR(risesWithin(1100, 1900), 882 * 8 / 10, 1);
}

TEST_F(HeadlessRender, SoundsAreMuteWithoutTheFocusButRunOn) {
  run("wait 200\nfocus off\nwait 200\nfocus on\nwait 10000", [&](HeadlessPlatform& p) {
    const auto device = p.createSoundDevice();
    const auto buffer = device->CreateSoundBufferFromFile("a", "tone.wav", 0);
    buffer->Play(0);
    yield(p, 999);
    EXPECT_EQ(buffer->GetStatus(), SoundBuffer::kPlaying);
    p.yield();
    EXPECT_EQ(buffer->GetStatus(), 0);
    yield(p, 100);
  });
  EXPECT_GT(level(Side::kLeft, 20, 200), 0.1);
  EXPECT_LT(level(Side::kLeft, 220, 400), 0.0001);
  EXPECT_GT(level(Side::kLeft, 420, 990), 0.1);
  EXPECT_LT(level(Side::kLeft, 1020, 1100), 0.0001);
}

TEST_F(HeadlessRender, ListeningChangesNothingInTheTrace) {
  const auto scene = [&](HeadlessPlatform& p) {
    const auto device = p.createSoundDevice();
    const auto buffer = device->CreateSoundBufferFromFile("a", "tone.wav", 0);
    for (int i = 0; i < 50; ++i) {
      buffer->SetFrequency(30000 + i * 777);
      if (buffer->GetStatus() == 0) buffer->Play(0);
      yield(p, 99);
    }
  };
  run("wait 100000", scene);
  const std::string heard = trace.text();
  render = nullptr;
  run("wait 100000", scene);
  EXPECT_EQ(trace.text(), heard);
}

TEST_F(HeadlessRender, IsFlushedWheneverTheScriptIsReadFurther) {
  run("wait 5\nwait 7\nend", [&](HeadlessPlatform& p) {
    yield(p, 5);
    EXPECT_EQ(sink.flushed, 1U * 96);
    yield(p, 1);
    EXPECT_EQ(sink.flushed, 6U * 96);
    yieldForever(p);
  });
  EXPECT_EQ(sink.flushed, 13U * 96);
}

TEST_F(HeadlessRender, IsFlushedAtTheEndOfTheProgram) {
  scene([&](HeadlessPlatform& p) { yield(p, 30); });
  EXPECT_EQ(sink.flushed, 30U * 96);
}

TEST_F(HeadlessRender, TheSynthesiserIsHeardForAsLongAsItSpeaks) {
  options.speech = HeadlessSpeech::kEspeak;
  std::int64_t spoken = 0;
  scene([&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    EXPECT_THAT(voice->GetVoices(), SizeIs(3));
    yield(p, 100);
    voice->Speak("Select. Exit Game.", speak_flags::kSynchronous);
    spoken = now() - 100;
    yield(p, 300);
  });
  EXPECT_THAT(spoken, Gt(700));
  EXPECT_LT(spoken, 3000);
  EXPECT_EQ(level(Side::kLeft, 0, 100), 0);
  EXPECT_GT(level(Side::kLeft, 120, 400), 0.01);
  EXPECT_EQ(level(Side::kLeft, 120, 400), level(Side::kRight, 120, 400));
  const int end = 100 + static_cast<int>(spoken);
  EXPECT_LT(level(Side::kLeft, end + 10, end + 200), 0.001);
}

TEST_F(HeadlessRender, TheSynthesiserSpeaksTextAfterTextAndThroughALostFocus) {
  options.speech = HeadlessSpeech::kEspeak;
  run("focus off\nwait 100000", [&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    p.yield();
    const std::int64_t before = now();
    voice->Speak("one hundred and twenty five", speak_flags::kQueue);
    voice->Speak("one hundred and twenty five", speak_flags::kQueue);
    while (voice->RunningState() == Voice::kSpeaking) p.yield();
    const auto both = static_cast<int>(now() - before);
    EXPECT_GT(level(Side::kLeft, both / 8, both * 3 / 8), 0.01);
    EXPECT_GT(level(Side::kLeft, both * 5 / 8, both * 7 / 8), 0.01);
  });
}

TEST_F(HeadlessRender, APurgeSilencesTheSynthesiserAtOnce) {
  options.speech = HeadlessSpeech::kEspeak;
  scene([&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    voice->Speak("Welcome to the Maple Leaf Try Oval Track", speak_flags::kQueue);
    yield(p, 500);
    voice->Speak("", speak_flags::kPurge);
    EXPECT_EQ(voice->RunningState(), 1);
    yield(p, 500);
  });
  EXPECT_GT(level(Side::kLeft, 100, 500), 0.01);
  EXPECT_LT(level(Side::kLeft, 510, 1000), 0.0001);
}

TEST_F(HeadlessRender, ATextWithoutASoundTakesTheSynthesiserAMillisecond) {
  options.speech = HeadlessSpeech::kEspeak;
  scene([&](HeadlessPlatform& p) {
    const auto voice = p.createVoice();
    voice->Speak("", speak_flags::kSynchronous);
    EXPECT_EQ(now(), 1);
    voice->Speak("", speak_flags::kQueue);
    EXPECT_EQ(voice->RunningState(), Voice::kSpeaking);
    p.yield();
    EXPECT_NE(voice->RunningState(), Voice::kSpeaking);
  });
}

TEST_F(HeadlessRender, TheSynthesiserTakesItsRate) {
  options.speech = HeadlessSpeech::kEspeak;
  render = nullptr;
  const auto timeAt = [&](int rate) {
    std::int64_t ms = 0;
    scene([&](HeadlessPlatform& p) {
      const auto voice = p.createVoice();
      voice->setRate(rate);
      voice->Speak("Welcome to the Maple Leaf Try Oval Track", speak_flags::kSynchronous);
      ms = now();
    });
    return static_cast<double>(ms);
  };
  const double normal = timeAt(0);
  EXPECT_NEAR(timeAt(5) / normal, std::pow(3, -0.5), 0.15);
  EXPECT_GT(timeAt(-5) / normal, 1.4);
}

std::vector<std::int16_t> ramp() {
  std::vector<std::int16_t> samples;
  for (int i = -3000; i < 3000; ++i) samples.push_back(static_cast<std::int16_t>(i * 10));
  return samples;
}

TEST(RenderSink, AWavFileIsWhatItSays) {
  TemporaryFolder folder;
  const std::string path = (folder.path() / "mix.wav").string();
  openRenderSink(path)->write(ramp());
  SF_INFO info{};
  SNDFILE* const file = sf_open(path.c_str(), SFM_READ, &info);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(info.samplerate, 48000);
  EXPECT_EQ(info.channels, 2);
  EXPECT_EQ(info.format & SF_FORMAT_SUBMASK, SF_FORMAT_PCM_16);
  std::vector<std::int16_t> read(ramp().size());
  EXPECT_EQ(sf_readf_short(file, read.data(), 3000), 3000);
  sf_close(file);
  EXPECT_EQ(read, ramp());
}

TEST(RenderSink, AnyOtherPathGetsRawSamples) {
  TemporaryFolder folder;
  openRenderSink((folder.path() / "mix.pcm").string())->write(std::vector<std::int16_t>{1, -2, 0x1234});
  EXPECT_EQ(folder.read("mix.pcm"), std::string("\x01\x00\xFE\xFF\x34\x12", 6));
}

TEST(RenderSink, WhatCannotBeWrittenIsAFailedCall) {
  EXPECT_THROW(openRenderSink("/nowhere/mix.wav"), PlatformError);
  EXPECT_THROW(openRenderSink("/nowhere/mix.pcm"), PlatformError);
  const auto full = openRenderSink("/dev/full");
  EXPECT_THROW(
      {
        full->write(ramp());
        full->flush();
      },
      PlatformError);
}

}  // namespace
}  // namespace vorn
