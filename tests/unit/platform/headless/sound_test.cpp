#include "platform/headless/virtual_sound.h"

#include <utime.h>

#include "unit/platform/headless/tiny_game.h"

namespace vorn {
namespace {

using testing::ElementsAre;

TEST(PlayHead, PassesItsFramesAtItsFrequency) {
  PlayHead head(22050, 22050);
  head.play(false);
  head.moveTo(1);
  EXPECT_EQ(head.frame(), 22);
  head.moveTo(999);
  EXPECT_EQ(head.frame(), 22027);
  EXPECT_TRUE(head.isPlaying());
  head.moveTo(1000);
  EXPECT_FALSE(head.isPlaying());
  EXPECT_EQ(head.frame(), 0);
}

TEST(PlayHead, KeepsFractionsOfAFrame) {
  PlayHead head(100000, 100);  // a tenth of a frame a millisecond
  head.play(false);
  for (int ms = 1; ms <= 95; ++ms) head.moveTo(ms);
  EXPECT_EQ(head.frame(), 9);
  head.moveTo(100);
  EXPECT_EQ(head.frame(), 10);
}

TEST(PlayHead, AFrequencyCountsFromWhenItIsSet) {
  PlayHead head(30000, 10000);
  head.play(false);
  head.moveTo(1000);
  head.setFrequency(20000);
  head.moveTo(1999);
  EXPECT_TRUE(head.isPlaying());
  head.moveTo(2000);
  EXPECT_FALSE(head.isPlaying());
}

TEST(PlayHead, LoopsWithoutLosingAFrame) {
  PlayHead head(1000, 22050);
  head.play(true);
  head.moveTo(60000);
  EXPECT_TRUE(head.isPlaying());
  EXPECT_EQ(head.frame(), (60000LL * 22050 / 1000) % 1000);
}

TEST(PlayHead, StopKeepsThePositionAndPlayGoesOnFromThere) {
  PlayHead head(1000, 1000);
  head.play(false);
  head.moveTo(400);
  head.stop();
  head.moveTo(900);
  EXPECT_EQ(head.frame(), 400);
  head.play(false);
  head.moveTo(1499);
  EXPECT_TRUE(head.isPlaying());
  head.moveTo(1500);
  EXPECT_FALSE(head.isPlaying());
}

class HeadlessSound : public HeadlessTest {
 protected:
  void SetUp() override {
    folder.write("second.wav", makeWav(22050));
    folder.write("stereo.wav", makeWav(1000, {1000, 2, 16}));
    folder.write("eight.wav", makeWav(1000, {1000, 1, 8}));
  }
  void play(const std::function<void(SoundDevice&)>& act) {
    scene([&](HeadlessPlatform& p) {
      const auto device = p.createSoundDevice();
      act(*device);
    });
  }
  /// Yields until the buffer has ended. Returns how many yields that took.
  int yieldsUntilEnd(SoundBuffer& buffer) {
    int yields = 0;
    for (; buffer.GetStatus() == SoundBuffer::kPlaying; ++yields) running->yield();
    return yields;
  }
  static std::unique_ptr<SoundBuffer> load(SoundDevice& device, const std::string& file = "second.wav") {
    return device.CreateSoundBufferFromFile("slot", file, 224);
  }
};

TEST_F(HeadlessSound, PlaysForItsFramesAtItsFrequency) {
  play([&](SoundDevice& device) {
    const auto buffer = load(device);
    EXPECT_EQ(buffer->GetFrequency(), 22050);
    EXPECT_EQ(buffer->dataBytes(), 44100);
    EXPECT_EQ(buffer->GetStatus(), 0);
    buffer->Play(0);
    EXPECT_EQ(yieldsUntilEnd(*buffer), 1000);
    buffer->SetFrequency(44100);
    EXPECT_EQ(buffer->GetFrequency(), 44100);
    buffer->Play(0);
    EXPECT_EQ(yieldsUntilEnd(*buffer), 500);
    buffer->SetFrequency(22051);
    buffer->Play(0);
    EXPECT_EQ(yieldsUntilEnd(*buffer), 1000);
  });
}

TEST_F(HeadlessSound, AnEndedBufferStartsFromTheBeginningAStoppedOneGoesOn) {
  play([&](SoundDevice& device) {
    const auto buffer = load(device);
    buffer->Play(0);
    yield(*running, 400);
    buffer->Stop();
    EXPECT_EQ(buffer->GetStatus(), 0);
    yield(*running, 50);
    buffer->Play(0);
    EXPECT_EQ(yieldsUntilEnd(*buffer), 600);
    buffer->Play(0);
    EXPECT_EQ(yieldsUntilEnd(*buffer), 1000);
  });
}

TEST_F(HeadlessSound, PlayingAPlayingBufferDoesNotRestartIt) {
  play([&](SoundDevice& device) {
    const auto buffer = load(device);
    buffer->Play(0);
    yield(*running, 400);
    buffer->Play(0);
    EXPECT_EQ(yieldsUntilEnd(*buffer), 600);
  });
}

TEST_F(HeadlessSound, PlayingAPlayingBufferMayChangeWhetherItLoops) {
  play([&](SoundDevice& device) {
    const auto buffer = load(device);
    buffer->Play(1);
    yield(*running, 2400);
    EXPECT_EQ(buffer->GetStatus(), SoundBuffer::kPlaying);
    buffer->Play(0);
    EXPECT_EQ(yieldsUntilEnd(*buffer), 600);
    buffer->Play(0);
    yield(*running, 400);
    buffer->Play(1);
    yield(*running, 5000);
    EXPECT_EQ(buffer->GetStatus(), SoundBuffer::kPlaying);
  });
}

TEST_F(HeadlessSound, APositionIsTakenDownToTheWholeFrame) {
  play([&](SoundDevice& device) {
    const auto stereo = load(device, "stereo.wav");
    EXPECT_EQ(stereo->dataBytes(), 4000);
    for (const int byte : {2000, 2001, 2003}) {
      stereo->SetCurrentPosition(byte);
      stereo->Play(0);
      EXPECT_EQ(yieldsUntilEnd(*stereo), 500) << byte;
    }
    const auto eight = load(device, "eight.wav");
    EXPECT_EQ(eight->dataBytes(), 1000);
    eight->SetCurrentPosition(999);
    eight->Play(0);
    EXPECT_EQ(yieldsUntilEnd(*eight), 1);
  });
}

TEST_F(HeadlessSound, SoundsRunOnDuringASynchronousText) {
  play([&](SoundDevice& device) {
    const auto voice = running->createVoice();
    const auto buffer = load(device);
    buffer->Play(0);
    voice->Speak("abcdefghij", speak_flags::kSynchronous);
    EXPECT_EQ(yieldsUntilEnd(*buffer), 400);
  });
}

TEST_F(HeadlessSound, EveryOperationIsTracedReadsAreNot) {
  play([&](SoundDevice& device) {
    device.SetCooperativeLevel(2);
    auto buffer = device.CreateSoundBufferFromFile("markBuffer", "second.wav", 224);
    buffer->SetCurrentPosition(0);
    buffer->GetFrequency();
    buffer->SetVolume(-3500);
    buffer->SetPan(10000);
    buffer->SetFrequency(22051);
    buffer->Play(1);
    buffer->GetStatus();
    buffer->SetCurrentPosition(44099);
    running->yield();
    buffer->Stop();
    buffer.reset();
  });
  EXPECT_EQ(
      trace.text(),
      "{\"ms\":0,\"ev\":\"device\",\"device\":\"sound\",\"op\":\"create\",\"value\":null}\n"
      "{\"ms\":0,\"ev\":\"device\",\"device\":\"sound\",\"op\":\"SetCooperativeLevel\",\"value\":2}\n"
      "{\"ms\":0,\"ev\":\"sound\",\"buffer\":\"markBuffer\",\"op\":\"create\",\"value\":\"second.wav\"}\n"
      "{\"ms\":0,\"ev\":\"sound\",\"buffer\":\"markBuffer\",\"op\":\"SetCurrentPosition\",\"value\":0}\n"
      "{\"ms\":0,\"ev\":\"sound\",\"buffer\":\"markBuffer\",\"op\":\"SetVolume\",\"value\":-3500}\n"
      "{\"ms\":0,\"ev\":\"sound\",\"buffer\":\"markBuffer\",\"op\":\"SetPan\",\"value\":10000}\n"
      "{\"ms\":0,\"ev\":\"sound\",\"buffer\":\"markBuffer\",\"op\":\"SetFrequency\",\"value\":22051}\n"
      "{\"ms\":0,\"ev\":\"sound\",\"buffer\":\"markBuffer\",\"op\":\"Play\",\"value\":1}\n"
      "{\"ms\":0,\"ev\":\"sound\",\"buffer\":\"markBuffer\",\"op\":\"SetCurrentPosition\",\"value\":44099}\n"
      "{\"ms\":1,\"ev\":\"sound\",\"buffer\":\"markBuffer\",\"op\":\"Stop\",\"value\":null}\n"
      "{\"ms\":1,\"ev\":\"sound\",\"buffer\":\"markBuffer\",\"op\":\"release\",\"value\":null}\n"
      "{\"ms\":1,\"ev\":\"device\",\"device\":\"sound\",\"op\":\"release\",\"value\":null}\n"
      "{\"ms\":1,\"ev\":\"end\",\"exit\":0}\n");
}

TEST_F(HeadlessSound, WhatIsOutOfRangeIsAFailedCallAndNotTraced) {
  play([&](SoundDevice& device) {
    const auto buffer = load(device);
    EXPECT_THROW(buffer->Play(2), PlatformError);
    EXPECT_THROW(buffer->SetVolume(1), PlatformError);
    EXPECT_THROW(buffer->SetVolume(-10001), PlatformError);
    EXPECT_THROW(buffer->SetPan(10001), PlatformError);
    EXPECT_THROW(buffer->SetPan(-10001), PlatformError);
    EXPECT_THROW(buffer->SetFrequency(99), PlatformError);
    EXPECT_THROW(buffer->SetFrequency(100001), PlatformError);
    EXPECT_THROW(buffer->SetCurrentPosition(-1), PlatformError);
    EXPECT_THROW(buffer->SetCurrentPosition(44100), PlatformError);
  });
  EXPECT_THAT(trace.soundsOf("slot"), ElementsAre("create second.wav", "release"));
}

TEST_F(HeadlessSound, AFileThatIsMissingOrNoSoundIsAFailedCall) {
  folder.write("text.wav", "no sound at all");
  play([&](SoundDevice& device) {
    EXPECT_THROW(load(device, "missing.wav"), PlatformError);
    EXPECT_THROW(load(device, ".wav"), PlatformError);
    EXPECT_THROW(load(device, "text.wav"), PlatformError);
  });
  EXPECT_THAT(trace.soundsOf("slot"), testing::IsEmpty());
}

TEST_F(HeadlessSound, FilesAreFoundWithoutRegardToCase) {
  play([&](SoundDevice& device) { EXPECT_EQ(load(device, "SECOND.WAV")->dataBytes(), 44100); });
  EXPECT_THAT(trace.soundsOf("slot"), ElementsAre("create SECOND.WAV", "release"));
}

TEST_F(HeadlessSound, AFileThatHasChangedIsReadAgain) {
  play([&](SoundDevice& device) {
    EXPECT_EQ(load(device)->dataBytes(), 44100);
    folder.write("second.wav", makeWav(11025));
    EXPECT_EQ(load(device)->dataBytes(), 22050);
  });
}

TEST(RecordingCache, ReadsAFileOnce) {
  TemporaryFolder folder;
  folder.write("a.wav", makeWav(10));
  FolderFiles files(folder.path());
  RecordingCache cache;
  const auto first = cache.load(files, "a.wav");
  EXPECT_EQ(cache.load(files, "A.wav"), first);
  const utimbuf later{2'000'000'000, 2'000'000'000};
  utime((folder.path() / "a.wav").c_str(), &later);
  EXPECT_NE(cache.load(files, "a.wav"), first);
}

}  // namespace
}  // namespace vorn
