// Which sound device plays, with how large a buffer, and what is said of it. Runs within with_desktop.sh.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdio.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <numbers>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/desktop/desktop_platform.h"
#include "support/program.h"
#include "support/temporary_folder.h"
#include "support/wav_maker.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using testing::EndsWith;
using testing::HasSubstr;

constexpr const char* kLate = " Your sound device is late: everything is heard ";
constexpr const char* kMissing = " The sound device that was asked for is not there. \n";
constexpr const char* kBufferFile = "vorn1buffer.txt";

/// See sound_server.sh.
void soundServer(const std::string& happening) {
  ASSERT_EQ(std::system((VORN_SOUND_SERVER " " + happening).c_str()), 0) << happening;
}

/// Halts this whole program for a tenth of a second; the sound server goes on.
void halt() {
  ASSERT_EQ(std::system("kill -STOP $PPID; sleep 0.1; kill -CONT $PPID"), 0);
}

struct Stereo {
  std::vector<double> left, right;  ///< -1 .. 1
};

/// What `sink` plays in the next `seconds`.
Stereo listen(const std::string& sink, double seconds) {
  const std::string command = "timeout 20 parec -d " + sink +
                              ".monitor --format=s16le --rate=48000 --channels=2 --latency-msec=5 --raw "
                              "2>/dev/null | head -c " +
                              std::to_string(4 * static_cast<int>(48000 * seconds));
  FILE* recorder = popen(command.c_str(), "r");
  Stereo heard;
  std::int16_t frame[2];
  while (fread(frame, sizeof frame, 1, recorder) == 1) {
    heard.left.push_back(frame[0] / 32768.0);
    heard.right.push_back(frame[1] / 32768.0);
  }
  pclose(recorder);
  return heard;
}

double peak(const std::vector<double>& samples) {
  double loudest = 0;
  for (const double sample : samples) loudest = std::max(loudest, std::abs(sample));
  return loudest;
}

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

class SoundDeviceTest : public testing::Test {
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
  bool yieldUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit = 60s) {
    const auto end = steady_clock::now() + limit;
    while (!condition()) {
      if (steady_clock::now() > end) return false;
      platform->yield(5);
    }
    return true;
  }
  bool isSaid(const std::string& text) {
    return yieldUntil([&] { return captions.str().find(text) != std::string::npos; });
  }
  bool isPlaying(const std::string& sink) {
    return yieldUntil([&] { return peak(listen(sink, 0.3).left) > 0.1; });
  }

  TemporaryFolder folder;
  std::ostringstream captions;
  DesktopOptions options;
  std::unique_ptr<Platform> platform;
  std::unique_ptr<Voice> voice;
  std::unique_ptr<SoundDevice> device;
  std::unique_ptr<SoundBuffer> tone;
};

TEST_F(SoundDeviceTest, TheBufferGrowsUnderLoadInSilenceAndIsKept) {
  open();
  ASSERT_TRUE(isPlaying("out"));
  Stereo heard;
  std::thread listener([&] { heard = listen("out", 4); });
  std::this_thread::sleep_for(500ms);
  halt();
  std::this_thread::sleep_for(500ms);
  EXPECT_FALSE(folder.has(kBufferFile));
  halt();
  listener.join();
  EXPECT_EQ(clicks(heard.left, kHertz), 0);
  EXPECT_GT(peak({heard.left.end() - 4800, heard.left.end()}), 0.4) << "it sounds on";
  voice->Speak(" one ", speak_flags::kSynchronous);
  EXPECT_TRUE(yieldUntil([&] { return folder.has(kBufferFile); }));
  const int kept = std::stoi(folder.read(kBufferFile));
  EXPECT_GE(kept, 1024);
  EXPECT_EQ(captions.str(), " one \n");
  close();

  // The next time it begins with that, so that the same load needs no more.
  open();
  ASSERT_TRUE(isPlaying("out"));
  halt();
  std::this_thread::sleep_for(500ms);
  halt();
  std::this_thread::sleep_for(500ms);
  close();
  EXPECT_GT(std::stoi(folder.read(kBufferFile)), kept);
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
  EXPECT_EQ(peak(listen("other", 0.5).left), 0);
  voice->Speak(" one ", speak_flags::kSynchronous);
  yieldUntil([] { return false; }, 500ms);
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
  yieldUntil([] { return false; }, 500ms);
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
  yieldUntil([] { return false; }, 2500ms);
  EXPECT_THAT(captions.str(), EndsWith(said + " two \n"));
  close();
  soundServer("remove headphones");
}

TEST_F(SoundDeviceTest, OfAQuickOneNothingIsSaid) {
  open();
  voice->Speak(" one ", speak_flags::kSynchronous);
  yieldUntil([] { return false; }, 4000ms);
  EXPECT_EQ(captions.str(), " one \n");
}

TEST_F(SoundDeviceTest, EarsAreExchanged) {
  for (const bool swapped : {false, true}) {
    options.swapsEars = swapped;
    open();
    tone->SetPan(-10000);
    ASSERT_TRUE(yieldUntil([] {
      const Stereo heard = listen("out", 0.3);
      return peak(heard.left) > 0.1 || peak(heard.right) > 0.1;
    }));
    const Stereo heard = listen("out", 0.3);
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
  yieldUntil([] { return false; }, 1500ms);
  Stereo heard;
  std::thread listener([&] { heard = listen("out", 3); });
  std::this_thread::sleep_for(1s);
  blip->Play(SoundBuffer::kOnce);
  listener.join();
  int loud = 0;
  for (const double sample : heard.left) loud += sample > 0.4 ? 1 : 0;
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
