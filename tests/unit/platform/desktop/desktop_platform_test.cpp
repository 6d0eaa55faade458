#include "platform/desktop/desktop_platform.h"

#include <SDL.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <thread>

#include "platform/desktop/tick_clock.h"
#include "support/temporary_folder.h"
#include "support/virtual_controller.h"
#include "support/wav_maker.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using std::chrono::steady_clock;

/// Environment variables of one test; afterwards they are as before.
class Environment {
 public:
  ~Environment() {
    for (const auto& [name, value] : before_) {
      value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    }
  }
  void set(const std::string& name, const std::string& value) {
    remember(name);
    setenv(name.c_str(), value.c_str(), 1);
  }
  void unset(const std::string& name) {
    remember(name);
    unsetenv(name.c_str());
  }

 private:
  void remember(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    before_.try_emplace(name, value == nullptr ? std::nullopt : std::optional<std::string>(value));
  }
  std::map<std::string, std::optional<std::string>> before_;
};

struct Recorder : EventReceiver {
  void Form_KeyDown(int virtualKeyCode, int shiftState) override {
    keys.push_back(virtualKeyCode);
    shifts.push_back(shiftState);
  }
  void DirectXEvent8_DXCallback(int) override {}
  std::vector<int> keys, shifts;
};

/// SDL without screen and loudspeakers; its disk driver plays at the pace of a clock.
class DesktopPlatformTest : public testing::Test {
 protected:
  DesktopPlatformTest() {
    environment.set("SDL_VIDEODRIVER", "dummy");
    environment.set("SDL_AUDIODRIVER", "disk");
    environment.set("SDL_DISKAUDIOFILE", "/dev/null");
    environment.set("BRLAPI_HOST", "127.0.0.1:9");  // nobody's display
    environment.set("SPEECHD_ADDRESS", "unix_socket:" + (folder.path() / "speechd.sock").string());
    folder.write("vorn9.wav", makeWav(2205));
    options.folder = folder.path();
    options.answerBoxes = true;
    options.bufferFrames = 512;  // the driver never makes up for lost time, which looks like holes
  }
  Platform& platform() {
    if (!platform_) {
      platform_ = makeDesktopPlatform(options);
      platform_->setEventReceiver(&recorder);
    }
    return *platform_;
  }
  void press(SDL_Scancode place, SDL_Keycode sign, bool repeated = false) {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.windowID = 1;  // the first of the process, and the next one's again after it
    event.key.keysym = {place, sign, KMOD_NUM | KMOD_LSHIFT, 0};
    event.key.repeat = repeated ? 1 : 0;
    SDL_PushEvent(&event);
  }
  void askToClose() {
    SDL_Event event{};
    event.type = SDL_QUIT;
    SDL_PushEvent(&event);
  }
  void reopen() { platform_.reset(); }

  Environment environment;
  TemporaryFolder folder;
  DesktopOptions options;
  Recorder recorder;

 private:
  std::unique_ptr<Platform> platform_;
};

TEST_F(DesktopPlatformTest, SoundsOfTheFolderPlayInTheirTime) {
  auto device = platform().createSoundDevice();
  device->SetCooperativeLevel(2);
  auto buffer = device->CreateSoundBufferFromFile("markBuffer", "VORN9.wav", 224);
  EXPECT_EQ(buffer->dataBytes(), 4410);
  EXPECT_EQ(buffer->GetFrequency(), 22050);
  const auto start = steady_clock::now();
  buffer->Play(0);
  while (buffer->GetStatus() == SoundBuffer::kPlaying && steady_clock::now() < start + 60s) {
    platform().yield();
  }
  EXPECT_EQ(buffer->GetStatus(), 0);
  EXPECT_GT(steady_clock::now() - start, 80ms);
}

TEST_F(DesktopPlatformTest, ASoundThatCannotBeLoadedIsAFailedCallThatNamesIt) {
  auto device = platform().createSoundDevice();
  folder.write("vorn1.wav", "not a sound");
  for (const std::string name : {"vorn1.wav", "vorn2.wav", ".wav", ""}) {
    try {
      device->CreateSoundBufferFromFile("engineBuffer", name, 224);
      ADD_FAILURE() << name;
    } catch (const PlatformError& error) {
      EXPECT_THAT(error.what(), testing::HasSubstr(name));
    }
  }
}

TEST_F(DesktopPlatformTest, TheVoiceSpeaksInItsTimeAndCaptionsShowIt) {
  std::ostringstream captions;
  options.captions = &captions;
  auto voice = platform().createVoice();
  EXPECT_GT(voice->GetVoices().size(), 100U);
  testing::internal::CaptureStderr();
  const auto start = steady_clock::now();
  voice->Speak(" Exit Game. ", speak_flags::kSynchronous);
  EXPECT_GT(steady_clock::now() - start, 400ms);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "it has not been given up";
  EXPECT_EQ(captions.str(), " Exit Game. \n");
}

TEST_F(DesktopPlatformTest, OpenedAgainTheVoiceStillSpeaks) {
  for (int i = 0; i < 3; ++i) {
    platform().createVoice()->Speak("one", speak_flags::kSynchronous);
    reopen();
  }
}

TEST_F(DesktopPlatformTest, KeysArriveAtYieldsOnceAPress) {
  platform().yield(0);
  press(SDL_SCANCODE_RETURN, SDLK_RETURN);
  press(SDL_SCANCODE_RETURN, SDLK_RETURN, true);
  press(SDL_SCANCODE_A, SDLK_a);
  press(SDL_SCANCODE_AUDIOMUTE, SDLK_AUDIOMUTE);
  EXPECT_TRUE(recorder.keys.empty());
  platform().yield(0);
  EXPECT_EQ(recorder.keys, (std::vector<int>{13, 65}));
  EXPECT_EQ(recorder.shifts, (std::vector<int>{1, 1}));
}

TEST_F(DesktopPlatformTest, ASynchronousTextDeliversNothingButKeepsIt) {
  auto voice = platform().createVoice();
  platform().yield(0);
  press(SDL_SCANCODE_ESCAPE, SDLK_ESCAPE);
  voice->Speak("one", speak_flags::kSynchronous);
  EXPECT_TRUE(recorder.keys.empty());
  platform().yield(0);
  EXPECT_EQ(recorder.keys, (std::vector<int>{27}));
}

TEST_F(DesktopPlatformTest, NobodyNeedListen) {
  platform().setEventReceiver(nullptr);
  press(SDL_SCANCODE_RETURN, SDLK_RETURN);
  EXPECT_NO_THROW(platform().yield(0));
}

TEST_F(DesktopPlatformTest, TheFirstRequestToCloseIsThrownOnceTheSecondEndsTheProgram) {
  platform().yield(0);
  askToClose();
  EXPECT_THROW(platform().yield(0), WindowClosed);
  for (int i = 0; i < 5; ++i) {
    EXPECT_NO_THROW(platform().yield());
  }
  askToClose();
  EXPECT_THROW(platform().yield(0), ProgramEnd);
}

TEST_F(DesktopPlatformTest, DuringTheShutdownTheFirstRequestToCloseChangesNothing) {
  platform().enterShutdown();
  askToClose();
  EXPECT_NO_THROW(platform().yield(0));
}

TEST_F(DesktopPlatformTest, DuringTheShutdownASecondRequestToCloseEndsTheProgram) {
  platform().enterShutdown();
  askToClose();
  platform().yield(0);
  askToClose();
  try {
    platform().yield(0);
    ADD_FAILURE();
  } catch (const ProgramEnd& end) {
    EXPECT_EQ(end.exitStatus, 0);
  }
}

TEST_F(DesktopPlatformTest, ARequestToCloseCutsASynchronousText) {
  auto voice = platform().createVoice();
  platform().yield(0);
  askToClose();
  std::string longText;
  for (int i = 0; i < 100; ++i) longText += "one two three four five ";  // minutes
  const auto start = steady_clock::now();
  voice->Speak(longText, speak_flags::kSynchronous);
  EXPECT_LT(steady_clock::now() - start, 60s);
  EXPECT_THROW(platform().yield(0), WindowClosed);
}

TEST_F(DesktopPlatformTest, AYieldWaitsAsLongAsItMayButForAnEvent) {
  platform().yield(0);
  const std::int32_t start = platform().tickCount();
  platform().yield(99);
  EXPECT_GE(platform().tickCount() - start, 99);
  const auto before = steady_clock::now();
  for (int i = 0; i < 200; ++i) {
    platform().yield(0);
  }
  EXPECT_LT(steady_clock::now() - before, 10s);
  std::thread presser([this] {
    std::this_thread::sleep_for(50ms);
    press(SDL_SCANCODE_RETURN, SDLK_RETURN);
  });
  const auto waiting = steady_clock::now();
  platform().yield(60'000);
  presser.join();
  EXPECT_LT(steady_clock::now() - waiting, 50s);
  EXPECT_EQ(recorder.keys, (std::vector<int>{13}));
}

TEST_F(DesktopPlatformTest, TheClocksAreThoseOfTheMachine) {
  const auto passed = [](steady_clock::time_point from, steady_clock::time_point to) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(to - from).count();
  };
  const auto beforeFirst = steady_clock::now();
  const std::int32_t first = platform().tickCount();
  const auto afterFirst = steady_clock::now();
  std::this_thread::sleep_for(30ms);
  const auto beforeSecond = steady_clock::now();
  const std::int32_t second = platform().tickCount();
  const auto afterSecond = steady_clock::now();
  EXPECT_GE(second - first, passed(afterFirst, beforeSecond) - 1);
  EXPECT_LE(second - first, passed(beforeFirst, afterSecond) + 2);

  std::time_t now = 0;
  Date today;
  double seconds = 0;
  do {  // all within one second
    now = std::time(nullptr);
    today = platform().today();
    seconds = platform().secondsSinceMidnight();
  } while (std::time(nullptr) != now);
  const std::tm local = *std::localtime(&now);
  EXPECT_EQ(today.year, local.tm_year + 1900);
  EXPECT_EQ(today.month, local.tm_mon + 1);
  EXPECT_EQ(today.day, local.tm_mday);
  EXPECT_NEAR(seconds, local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec, 1);
}

TEST_F(DesktopPlatformTest, AnsweredBoxesGoToStandardError) {
  platform().yield(0);
  testing::internal::CaptureStderr();
  EXPECT_EQ(platform().messageBox("First line.\rSecond line."), 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "First line.\nSecond line.\n");
}

TEST_F(DesktopPlatformTest, ALauncherThatCannotBeStartedIsAFailedCall) {
  EXPECT_THROW(platform().startProgram("arcadehub.exe", 3), PlatformError);
  folder.write("arcadehub.exe", "no program");
  EXPECT_THROW(platform().startProgram("arcadehub.exe", 3), PlatformError);
}

TEST_F(DesktopPlatformTest, ChanceDiffersFromRunToRun) {
  std::set<double> firsts;
  for (int i = 0; i < 3; ++i) {
    platform().reseedRandom();
    const double number = platform().randomFraction();
    EXPECT_GE(number, 0);
    EXPECT_LT(number, 1);
    firsts.insert(number);
  }
  EXPECT_EQ(firsts.size(), 3U);
}

TEST_F(DesktopPlatformTest, ChanceDiffersFromStartToStart) {
  std::set<double> firsts;
  for (int i = 0; i < 3; ++i) {
    firsts.insert(platform().randomFraction());
    reopen();
  }
  EXPECT_EQ(firsts.size(), 3U);
}

TEST_F(DesktopPlatformTest, AWindowThatNeverHadTheFocusIsHeard) {
  // The dummy window gets none, as one that opens behind another; the start-up speaks and sounds all the
  // same.
  const fs::path heard = folder.path() / "heard.raw";
  environment.set("SDL_DISKAUDIOFILE", heard.string());
  folder.write("loud.wav", makeWav(2205, {22050, 1, 16}, [](int) { return 0.5; }));
  auto device = platform().createSoundDevice();
  auto buffer = device->CreateSoundBufferFromFile("markBuffer", "loud.wav", 224);
  platform().yield();
  platform().yield();
  buffer->Play(0);
  while (buffer->GetStatus() == SoundBuffer::kPlaying) {
    platform().yield();
  }
  buffer.reset();
  device.reset();
  reopen();
  EXPECT_NE(folder.read("heard.raw").find_first_not_of('\0'), std::string::npos);
}

TEST_F(DesktopPlatformTest, AClosedWindowAnswersABoxAndIsStillToBeClosed) {
  options.answerBoxes = false;
  platform().yield(0);
  askToClose();
  testing::internal::CaptureStderr();
  EXPECT_EQ(platform().messageBox("Press a key."), 1);
  testing::internal::GetCapturedStderr();
  const auto askOnAndOn = [this] {
    for (int i = 0; i < 10; ++i) {
      platform().yield();
    }
  };
  EXPECT_THROW(askOnAndOn(), WindowClosed);
}

TEST_F(DesktopPlatformTest, InTheLastTwoMillisecondsOfAWaitOnlyTheEndCounts) {
  const TickClock clock;
  platform().yield(0);
  press(SDL_SCANCODE_RETURN, SDLK_RETURN);
  for (int i = 0; i < 20; ++i) {
    const std::int32_t start = clock.now();
    clock.waitForEvent(2);
    EXPECT_GE(clock.now() - start, 2);
  }
  int early = 0;
  for (int i = 0; i < 200 && early == 0; ++i) {
    const std::int32_t start = clock.now();
    clock.waitForEvent(3);
    early = clock.now() - start < 3;
  }
  EXPECT_EQ(early, 1) << "three milliseconds before its end a wait still looks for events";
}

TEST_F(DesktopPlatformTest, TheVoiceIsHeardOutOfTheDevicesBuffersToo) {
  // Behind the last sample stand three buffers that the device has not played yet.
  constexpr int kFrames = 4096;
  const fs::path heard = folder.path() / "heard.raw";
  environment.set("SDL_DISKAUDIOFILE", heard.string());
  options.bufferFrames = kFrames;
  auto voice = platform().createVoice();
  voice->Speak("one", speak_flags::kSynchronous);
  voice.reset();
  reopen();
  const std::string bytes = folder.read("heard.raw");
  const std::size_t lastSound = bytes.find_last_not_of('\0');
  ASSERT_NE(lastSound, std::string::npos);
  constexpr std::size_t kBytesAFrame = 8;
  EXPECT_GE((bytes.size() - lastSound) / kBytesAFrame, 3U * kFrames - 500);
}

TEST_F(DesktopPlatformTest, FilesAreThoseOfTheFolder) {
  platform().files().write("vorn1ops.cfg", "1\r\n");
  EXPECT_EQ(folder.read("vorn1ops.cfg"), "1\r\n");
  EXPECT_EQ(platform().files().find("VORN9.WAV"), "vorn9.wav");
}

TEST_F(DesktopPlatformTest, AVoiceThatIsAskedForAndNotThereIsReplacedAloud) {
  environment.set("PATH", "/nonexistent");  // no daemon to be started
  std::ostringstream captions;
  options.captions = &captions;
  options.speech = SpeechChoice::kSpeechDispatcher;
  auto voice = platform().createVoice();
  EXPECT_GT(voice->GetVoices().size(), 100U);
  voice->setRate(20);
  voice->Speak(" Exit Game. ", speak_flags::kSynchronous);
  voice->Speak(" Start Game. ", speak_flags::kSynchronous);
  EXPECT_THAT(captions.str(), testing::HasSubstr("speaks instead. \n"));
  EXPECT_THAT(captions.str(), testing::HasSubstr(" Exit Game. \n"));
  EXPECT_THAT(captions.str(), testing::EndsWith(" Start Game. \n"));
}

/// A machine without screen and loudspeakers, whatever this one has.
class BareMachineTest : public DesktopPlatformTest {
 protected:
  BareMachineTest() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"}) {
      environment.unset(name);
    }
    environment.set("HOME", folder.path().string());
    environment.set("PULSE_SERVER", "unix:/nonexistent");
    environment.set("PIPEWIRE_REMOTE", "nonexistent");
    environment.set("ALSA_CONFIG_PATH", "/dev/null");
    environment.set("JACK_NO_START_SERVER", "1");
    environment.set("AUDIODEV", "/nonexistent");
  }
  /// What is missing, as the player is told.
  std::string complaint(DesktopUnavailable::Missing expected) {
    try {
      platform();
    } catch (const DesktopUnavailable& error) {
      EXPECT_EQ(error.missing, expected);
      return error.what();
    }
    return "";
  }
};

TEST_F(BareMachineTest, WithoutADisplayItSaysSo) {
  environment.unset("SDL_VIDEODRIVER");
  const std::string text = complaint(DesktopUnavailable::Missing::kDisplay);
  EXPECT_THAT(text, testing::HasSubstr("no display"));
  EXPECT_THAT(text, testing::HasSubstr("graphical desktop"));
}

TEST_F(BareMachineTest, WithoutASoundDeviceItSaysSo) {
  environment.unset("SDL_AUDIODRIVER");
  const std::string text = complaint(DesktopUnavailable::Missing::kSound);
  EXPECT_THAT(text, testing::HasSubstr("no sound device"));
  EXPECT_THAT(text, testing::HasSubstr("sound server"));
}

TEST_F(BareMachineTest, AfterAFailureItCanBeOpened) {
  environment.unset("SDL_AUDIODRIVER");
  EXPECT_THROW(platform(), DesktopUnavailable);
  environment.set("SDL_AUDIODRIVER", "disk");
  EXPECT_NO_THROW(platform().yield());
}

constexpr int kRightTrigger = SDL_CONTROLLER_AXIS_TRIGGERRIGHT;

VirtualModel gamepad() {
  return {.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER,
          .axes = {0, 0, 0, 0, -32768, -32768},
          .buttons = SDL_CONTROLLER_BUTTON_MAX};
}

/// The first controller of `platform`, as the game opens it.
std::unique_ptr<ControllerDevice> openFirst(Platform& platform) {
  auto device = platform.createControllerDevice(platform.attachedControllers().at(0));
  device->SetEventNotification(1);
  device->SetRange(-10000, 10000);
  device->Acquire();
  return device;
}

TEST_F(DesktopPlatformTest, AControllerThatGoesAndComesBackIsSpokenOf) {
  std::ostringstream captions;
  options.captions = &captions;
  platform();
  auto pad = std::make_unique<VirtualController>(gamepad());
  const auto device = openFirst(platform());
  platform().yield();
  captions.str("");
  pad->axis(kRightTrigger, 32767);
  platform().yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, -10000);
  pad.reset();
  platform().yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, 0);
  EXPECT_EQ(captions.str(), " The controller is disconnected. \n");
  VirtualController again(gamepad());
  platform().yield();
  EXPECT_EQ(captions.str(), " The controller is disconnected. \n The controller is connected again. \n");
  again.axis(kRightTrigger, 32767);
  platform().yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, -10000);
}

TEST_F(DesktopPlatformTest, MarblesAndCrashesAreFeltUnlessToldNot) {
  folder.write("vorn15.wav", makeWav(2205));
  TickReport onMarbles{};
  onMarbles.speed = 100;
  onMarbles.marblesTicks = 1;
  for (const bool rumbles : {true, false}) {
    options.rumbles = rumbles;
    reopen();
    platform();
    VirtualController pad(gamepad());
    const auto device = openFirst(platform());
    const auto sounds = platform().createSoundDevice();
    pad.axis(kRightTrigger, 32767);
    platform().yield();
    platform().carTicked(onMarbles);
    EXPECT_EQ(pad.rumbles.size(), rumbles ? 1U : 0U);
    sounds->CreateSoundBufferFromFile("oneShotBuffer", "vorn9.wav", 224);
    EXPECT_EQ(pad.rumbles.size(), rumbles ? 1U : 0U) << "no such sound";
    sounds->CreateSoundBufferFromFile("oneShotBuffer", "vorn15.wav", 224);
    EXPECT_EQ(pad.rumbles.size(), rumbles ? 2U : 0U);
  }
}

}  // namespace
}  // namespace vorn
