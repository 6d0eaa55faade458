// Which sound device plays, with how large a buffer, and what is said of it. Runs within with_desktop.sh.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <future>
#include <numbers>
#include <string>
#include <thread>
#include <vector>

#include "desktop/platform_test.h"
#include "desktop/sound_server.h"
#include "platform/desktop/buffer_growth.h"
#include "support/program.h"
#include "support/wav_maker.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::EndsWith;
using testing::HasSubstr;

constexpr const char* kLate = " Your sound device is late: everything is heard ";
constexpr const char* kMissing = " The sound device that was asked for is not there. \n";
constexpr const char* kBufferFile = "vorn1buffer.txt";

/// Halts this whole program for a tenth of a second; the sound server goes on.
void halt() {
  ASSERT_EQ(std::system("kill -STOP $PPID; sleep 0.1; kill -CONT $PPID"), 0);
}

/// Listens beside the test, from when this is there.
class Listener {
 public:
  Listener(const std::string& sink, double seconds) {
    listening_ = std::async(std::launch::async, [this, sink, seconds] {
      return listen(sink + ".monitor", seconds, [this] { begun_.set_value(); });
    });
    EXPECT_EQ(begun_.get_future().wait_for(30s), std::future_status::ready) << "nothing to listen to";
  }
  /// All that was heard in those seconds.
  Stereo heard() { return listening_.get(); }

 private:
  std::promise<void> begun_;
  std::future<Stereo> listening_;  ///< goes first, and waits for the end
};

/// Where a sine of `hertz` is bent and no silence stands beside it.
int clicks(const std::vector<double>& samples, double hertz) {
  constexpr double kBend = 0.02;
  constexpr std::size_t kBeside = 480;
  const double turn = 2 * std::cos(2 * std::numbers::pi * hertz / 48000);
  int found = 0;
  std::size_t quietUntil = 0, lastQuiet = 0;
  for (std::size_t i = 2; i + kBeside < samples.size(); ++i) {
    if (samples[i] == 0 && samples[i - 1] == 0) lastQuiet = i;
    const bool isBent = std::abs(samples[i] - turn * samples[i - 1] + samples[i - 2]) > kBend;
    if (!isBent || i < quietUntil) continue;
    bool isBesideSilence = lastQuiet > 0 && i - lastQuiet < kBeside;
    for (std::size_t k = i; k < i + kBeside; ++k) isBesideSilence |= samples[k] == 0 && samples[k + 1] == 0;
    found += isBesideSilence ? 0 : 1;
    quietUntil = i + kBeside;
  }
  return found;
}

class SoundDeviceTest : public PlatformTest {
 protected:
  static constexpr double kHertz = 300;

  SoundDeviceTest() {
    folder.write("tone.wav", makeWav(22050, {}, [](int frame) {
                   return 0.5 * std::sin(2 * std::numbers::pi * kHertz * frame / 22050);
                 }));
    options.folder = folder.path();
    options.captions = &captions;
    options.speech = SpeechChoice::kEspeak;
  }
  void open() {
    platform = makeDesktopPlatform(options);
    voice = platform->createVoice();
    device = platform->createSoundDevice();
    tone = device->CreateSoundBufferFromFile("engineBuffer", "tone.wav", 224);
    tone->Play(SoundBuffer::kLooping);
  }
  void close() {
    tone.reset();
    device.reset();
    voice.reset();
    platform.reset();
  }
  bool isSaid(const std::string& text) {
    return yieldUntil([&] { return captions.str().find(text) != std::string::npos; });
  }
  bool isPlaying(const std::string& sink) {
    return yieldUntil([&] { return peak(listen(sink + ".monitor", 0.3).left) > 0.1; });
  }

  DesktopOptions options;
  std::unique_ptr<Voice> voice;
  std::unique_ptr<SoundDevice> device;
  std::unique_ptr<SoundBuffer> tone;
};

TEST_F(SoundDeviceTest, TheBufferGrowsUnderLoadInSilenceAndIsKept) {
  open();
  ASSERT_TRUE(isPlaying("out"));
  Listener listener("out", 4);
  halt();
  std::this_thread::sleep_for(500ms);
  halt();
  const Stereo heard = listener.heard();
  EXPECT_EQ(clicks(heard.left, kHertz), 0);
  ASSERT_GT(heard.left.size(), 4800U);
  EXPECT_GT(peak({heard.left.end() - 4800, heard.left.end()}), 0.4) << "it sounds on";
  yieldFor(500ms);
  EXPECT_FALSE(folder.has(kBufferFile)) << "not before something has been said";
  voice->Speak(" one ", speak_flags::kSynchronous);
  EXPECT_TRUE(yieldUntil([&] { return folder.has(kBufferFile); }));
  const int kept = std::stoi(folder.read(kBufferFile));
  EXPECT_GE(kept, 1024);
  EXPECT_EQ(captions.str(), " one \n");
  close();

  // The next time it begins with that: as much load again makes twice as much of it, if there is so much.
  open();
  ASSERT_TRUE(isPlaying("out"));
  halt();
  std::this_thread::sleep_for(500ms);
  halt();
  std::this_thread::sleep_for(500ms);
  close();
  EXPECT_GE(std::stoi(folder.read(kBufferFile)), std::min(2 * kept, BufferGrowth::kLargest));
}

TEST_F(SoundDeviceTest, ABufferThatWasAskedForStays) {
  options.bufferFrames = 512;
  open();
  ASSERT_TRUE(isPlaying("out"));
  for (int i = 0; i < 3; ++i) {
    halt();
    std::this_thread::sleep_for(500ms);
  }
  close();
  EXPECT_FALSE(folder.has(kBufferFile));
}

TEST_F(SoundDeviceTest, ADamagedSizeIsForgotten) {
  folder.write(kBufferFile, "\xff\xff 9999999999999999999 \n");
  open();
  EXPECT_TRUE(isPlaying("out"));
}

TEST_F(SoundDeviceTest, DevicesAreListedAndChosenByName) {
  soundServer("add other");
  const Finished listed = runProgram({VORN_PROGRAM, "--list-devices"});
  EXPECT_EQ(listed.exitStatus, 0);
  EXPECT_EQ(listed.output, "Null Output (out)\nNull Output (other)\n");
  options.audioDevice = "Null Output (out)";
  open();
  EXPECT_TRUE(isPlaying("out"));
  EXPECT_EQ(peak(listen("other.monitor", 0.5).left), 0);
  voice->Speak(" one ", speak_flags::kSynchronous);
  yieldFor(500ms);
  EXPECT_EQ(captions.str(), " one \n");
  close();
  soundServer("remove other");
}

TEST_F(SoundDeviceTest, InThePlaceOfOneThatIsNotThereTheUsualOnePlaysAndThatIsSaid) {
  options.audioDevice = "Null Output (other)";
  open();
  EXPECT_TRUE(isPlaying("out"));
  voice->Speak(" one ", speak_flags::kSynchronous);
  EXPECT_TRUE(isSaid(kMissing));
  yieldFor(500ms);
  EXPECT_EQ(captions.str(), " one \n" + std::string(kMissing));
}

TEST_F(SoundDeviceTest, ALateDeviceIsToldOnce) {
  soundServer("late headphones");
  open();
  voice->Speak(" one ", speak_flags::kSynchronous);
  EXPECT_TRUE(isSaid(kLate));
  const std::string said = captions.str().substr(captions.str().find(kLate));
  const int delay = std::stoi(said.substr(std::string(kLate).size()));
  EXPECT_GT(delay, 100);
  EXPECT_LT(delay, 600);
  voice->Speak(" two ", speak_flags::kSynchronous);
  yieldFor(2500ms);
  EXPECT_THAT(captions.str(), EndsWith(said + " two \n"));
  close();
  soundServer("remove headphones");
}

TEST_F(SoundDeviceTest, OfAQuickOneNothingIsSaid) {
  open();
  voice->Speak(" one ", speak_flags::kSynchronous);
  yieldFor(4000ms);
  EXPECT_EQ(captions.str(), " one \n");
}

TEST_F(SoundDeviceTest, EarsAreExchanged) {
  for (const bool swapped : {false, true}) {
    options.swapsEars = swapped;
    open();
    tone->SetPan(-10000);
    ASSERT_TRUE(yieldUntil([] {
      const Stereo heard = listen("out.monitor", 0.3);
      return peak(heard.left) > 0.1 || peak(heard.right) > 0.1;
    }));
    const Stereo heard = listen("out.monitor", 0.3);
    EXPECT_EQ(peak(swapped ? heard.left : heard.right), 0);
    EXPECT_GT(peak(swapped ? heard.right : heard.left), 0.4);
    close();
  }
}

TEST_F(SoundDeviceTest, AfterALongSilenceASoundHasItsBeginning) {
  folder.write("tone.wav", makeWav(2205, {}, [](int) { return 0.5; }));
  open();
  close();
  platform = makeDesktopPlatform(options);
  device = platform->createSoundDevice();
  auto blip = device->CreateSoundBufferFromFile("hornBuffer", "tone.wav", 224);
  yieldFor(1500ms);
  Listener listener("out", 3);
  blip->Play(SoundBuffer::kOnce);
  int loud = 0;
  for (const double sample : listener.heard().left) loud += sample > 0.4 ? 1 : 0;
  EXPECT_NEAR(loud, 4800, 100) << "a tenth of a second, whole";
}

TEST(BufferOption, IsARangeOfFrames) {
  for (const char* frames : {"63", "8193", "-1", "many"}) {
    const Finished program = runProgram({VORN_PROGRAM, "--buffer", frames});
    EXPECT_EQ(program.exitStatus, 2) << frames;
    EXPECT_THAT(program.errors, HasSubstr("--buffer")) << frames;
  }
}

}  // namespace
}  // namespace vorn
