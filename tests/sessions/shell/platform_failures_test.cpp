// Calls to the platform that fail: the start carries on over each, one by one.

#include <gmock/gmock.h>

#include <functional>
#include <sstream>

#include "platform/headless/headless_platform.h"
#include "sessions/shell/story.h"
#include "shell/start_up.h"
#include "state/fields.h"
#include "state/game_state.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

[[noreturn]] void fail(const char* call) {
  throw PlatformError(call, "", "it does not work today");
}

/// A voice that refuses what it is told to refuse.
class StubbornVoice : public Voice {
 public:
  StubbornVoice(std::unique_ptr<Voice> voice, bool countsVoices)
      : voice_(std::move(voice)), countsVoices_(countsVoices) {}
  std::vector<std::string> GetVoices() override {
    if (!countsVoices_) fail("GetVoices");
    return voice_->GetVoices();
  }

 private:
  void doSetVoice(int) override { fail("Voice"); }
  void doSetVolume(int) override { fail("Volume"); }
  void doSetRate(int) override { fail("Rate"); }
  void doSpeak(const std::string& text, int flags) override { voice_->Speak(text, flags); }
  int doRunningState() override { return voice_->RunningState(); }

  std::unique_ptr<Voice> voice_;
  bool countsVoices_;
};

/// What of a platform does not work.
struct Faults {
  bool sound = false, keyboard = false, controllers = false, controller = false, voice = false,
       countOfVoices = false, voiceSettings = false, box = false, program = false;
};

class FaultyPlatform : public HeadlessPlatform {
 public:
  FaultyPlatform(const HeadlessOptions& options, const HeadlessConnections& connections, const Faults& faults)
      : HeadlessPlatform(options, connections), faults_(faults) {}

  std::unique_ptr<SoundDevice> createSoundDevice() override {
    if (faults_.sound) fail("DirectSoundCreate");
    return HeadlessPlatform::createSoundDevice();
  }
  std::unique_ptr<KeyboardDevice> createKeyboardDevice() override {
    if (faults_.keyboard) fail("CreateDevice");
    return HeadlessPlatform::createKeyboardDevice();
  }
  std::vector<std::string> attachedControllers() override {
    if (faults_.controllers) fail("GetDIDevices");
    return HeadlessPlatform::attachedControllers();
  }
  std::unique_ptr<ControllerDevice> createControllerDevice(const std::string& identifier) override {
    if (faults_.controller) fail("CreateDevice");
    return HeadlessPlatform::createControllerDevice(identifier);
  }
  std::unique_ptr<Voice> createVoice() override {
    if (faults_.voice) fail("SpVoice");
    auto voice = HeadlessPlatform::createVoice();
    if (!faults_.countOfVoices && !faults_.voiceSettings) return voice;
    return std::make_unique<StubbornVoice>(std::move(voice), !faults_.countOfVoices);
  }
  int messageBox(const std::string& text) override {
    const int answer = HeadlessPlatform::messageBox(text);
    if (faults_.box) fail("MessageBox");
    return answer;
  }
  void startProgram(const std::string& name, int style) override {
    if (faults_.program) fail("Shell");
    HeadlessPlatform::startProgram(name, style);
  }

 private:
  Faults faults_;
};

class PlatformFailure : public testing::Test {
 protected:
  Story play(const Faults& faults, const std::string& statements) {
    trace = TraceRecord();
    options.folder = home.folder.path();
    std::istringstream lines(statements);
    StreamScript script(lines, "test");
    std::ostringstream diagnostics;
    FaultyPlatform platform(options, {&script, &trace, nullptr, &diagnostics, nullptr}, faults);
    GameState game(platform);
    platform.setFields({[&](std::string_view name) { return getField(game, name); },
                        [&](std::string_view name, double value) { return setField(game, name, value); }});
    exitStatus = platform.run([&] {
      Form_Load(game);
      return 0;
    });
    return storyOf(trace);
  }

  Session home;  // its folder has the sounds
  HeadlessOptions options;
  TraceRecord trace;
  int exitStatus = -1;
};

TEST_F(PlatformFailure, WithoutSoundTheMenuIsThere) {
  const Story story = play({.sound = true}, atMainMenu() + menuUp());
  EXPECT_EQ(exitStatus, 0);
  EXPECT_THAT(speechIn(story), ElementsAre("say  ", "say  Vorn 1 tts version 2 By Ostrin ",
                                           "queue  Select. Exit Game. ", "purge", "queue  Start Game. "));
  EXPECT_THAT(story, Not(Contains(StartsWith("oneShotBuffer"))));
}

TEST_F(PlatformFailure, WithoutSoundARaceCannotBeStarted) {
  play({.sound = true}, atMainMenu() + menuUp() + menuEnter() + "wait 60000\n");
  EXPECT_EQ(exitStatus, 1);
  EXPECT_THAT(trace.texts("error"), SizeIs(1));
}

TEST_F(PlatformFailure, WithoutSoundBadFilesAreStillComplainedOf) {
  home.folder.write("vorn5.wav", "");
  const Story story = play({.sound = true}, "wait 60000\n");
  EXPECT_EQ(exitStatus, 0);
  EXPECT_THAT(
      only(story, {"queue ", "box ", "say "}),
      ElementsAre(
          "queue Sorry, but one or more of the wave files seem to be corrupt. Please contact, Ostrin.",
          "box Sorry but one or more of the wave files seem to be corrupt\rPlease contact Ostrin",
          "queue  Thank you for playing Vorn 1 tts, By Ostrin. ", "say  exiting program "));
}

TEST_F(PlatformFailure, WithoutAKeyboardDeviceTheControllerServesTheMenus) {
  options.controller = true;
  const Story story = play({.keyboard = true}, "wait 50\ntap Space\n" + atMainMenu() +
                                                   "axis Y -10000\nwait 310\naxis Y 0\nwait 300\n");
  EXPECT_EQ(exitStatus, 0);
  EXPECT_EQ(story[story.size() - 2], "queue  Start Game. ");
}

TEST_F(PlatformFailure, ControllersThatCannotBeCountedAreNone) {
  options.controller = true;
  play({.controllers = true}, atMainMenu() + get({"joystickPresent", "inputDevice"}));
  EXPECT_EQ(answer(trace, "joystickPresent"), "0");
  EXPECT_EQ(answer(trace, "inputDevice"), "2");
}

// It was found, so the question is asked; it only does nothing.
TEST_F(PlatformFailure, ControllerThatCannotBeOpenedStaysStill) {
  options.controller = true;
  const Story story =
      play({.controller = true}, "axis Y -10000\n" + atMainMenu() + get({"joystickPresent", "joyGasBrake"}) +
                                     menuUp() + menuEnter() + "wait say  Select, joystick \n");
  EXPECT_EQ(exitStatus, 0);
  EXPECT_EQ(answer(trace, "joystickPresent"), "1");
  EXPECT_EQ(answer(trace, "joyGasBrake"), "0");
}

TEST_F(PlatformFailure, VoiceThatCannotBeMadeIsNone) {
  const Story story = play({.voice = true}, "wait 60000\n");
  EXPECT_EQ(exitStatus, 0);
  EXPECT_THAT(story, Contains("box Sorry but I couldn't find any voices to use\rPlease contact Ostrin"));
  EXPECT_THAT(speechIn(story), IsEmpty());
}

TEST_F(PlatformFailure, VoicesThatCannotBeCountedAreNone) {
  const Story story = play({.countOfVoices = true}, "wait 60000\n");
  EXPECT_EQ(exitStatus, 0);
  EXPECT_THAT(story, Contains("box Sorry but I couldn't find any voices to use\rPlease contact Ostrin"));
}

TEST_F(PlatformFailure, SettingsThatTheVoiceRefusesAreSkipped) {
  home.folder.write("vorn1voc.cfg", "1\r\n2\r\n80\r\n0\r\n");
  const Story story =
      play({.voiceSettings = true}, atMainMenu() + get({"voiceIndex", "speechRate", "voiceVolume"}));
  EXPECT_EQ(exitStatus, 0);
  EXPECT_THAT(only(story, {"voice ", "value "}), ElementsAre("voice create", "value voiceIndex 1",
                                                             "value speechRate 2", "value voiceVolume 80"));
}

TEST_F(PlatformFailure, BoxThatCannotBeShownIsSkipped) {
  options.voices = 0;
  play({.box = true}, "wait 60000\n");
  EXPECT_EQ(exitStatus, 0);
}

TEST_F(PlatformFailure, LauncherThatCannotBeStartedIsSkippedInSilence) {
  home.folder.write("arcadehub.exe", "");
  const Story story = play({.program = true}, atMainMenu() + menuEnter() + "wait 60000\n");
  EXPECT_EQ(exitStatus, 0);
  EXPECT_THAT(story, Not(Contains("say  exiting program ")));
  EXPECT_EQ(story.back(), "end 0");
}

TEST_F(PlatformFailure, EverythingThatCanFailMayFail) {
  options.controller = true;
  const Story story = play({true, true, true, true, true, true, true, true, true}, "wait 60000\n");
  EXPECT_EQ(exitStatus, 0);
  EXPECT_EQ(story.back(), "end 0");
}

}  // namespace
}  // namespace vorn
