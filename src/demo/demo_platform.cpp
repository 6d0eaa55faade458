#include "demo/demo_platform.h"

#include <ostream>
#include <utility>

#include "demo/demo_driver.h"
#include "platform/common/forwarding_devices.h"
#include "platform/common/forwarding_platform.h"
#include "platform/common/key_codes.h"
#include "platform/common/read_only_files.h"
#include "platform/common/windows1252.h"

namespace vorn {
namespace {

constexpr int kEscape = 27;
constexpr int kButtons = 10;

bool hasChanged(const JoystickState& a, const JoystickState& b) {
  return a.x != b.x || a.y != b.y || a.buttons != b.buttons;
}

/// What the devices of the demonstration read.
struct DemoInput {
  explicit DemoInput(int track) : driver(track) {}

  DemoDriver driver;
  DemoControls controls;
  bool isNotified = false;
};

/// Speaks through the other platform's voice and lets the driver hear it.
class OverheardVoice : public ForwardingVoice {
 public:
  OverheardVoice(std::unique_ptr<Voice> inner, DemoDriver& driver, std::ostream& captions)
      : ForwardingVoice(std::move(inner)), driver_(driver), captions_(captions) {}

 private:
  void doSpeak(const std::string& text, int flags) override {
    if (text.find_first_not_of(' ') != std::string::npos) {
      captions_ << printableUtf8(text) << std::endl;
      driver_.hear(text);
    }
    inner().Speak(text, flags);
  }

  DemoDriver& driver_;
  std::ostream& captions_;
};

class DemoKeyboard : public KeyboardDevice {
 public:
  explicit DemoKeyboard(const DemoInput& input) : input_(input) {}
  void SetCommonDataFormat(int) override {}
  void SetCooperativeLevel(int) override {}
  void Acquire() override {}
  KeyboardState GetDeviceStateKeyboard() override {
    KeyboardState state{};
    if (input_.controls.keyDown) state[input_.controls.keyDown->keyCode] = 1;
    return state;
  }

 private:
  const DemoInput& input_;
};

class DemoWheel : public ControllerDevice {
 public:
  explicit DemoWheel(DemoInput& input) : input_(input) {}
  void SetCommonDataFormat(int) override {}
  void SetCooperativeLevel(int) override {}
  void SetEventNotification(int) override { input_.isNotified = true; }
  void SetRange(int, int) override {}
  void SetAxisProperty(AxisProperty, int, int) override {}
  void Acquire() override {}
  void Unacquire() override { input_.isNotified = false; }
  void Poll() override {}
  JoystickState GetDeviceStateJoystick() override { return input_.controls.wheel; }
  int buttonCount() override { return kButtons; }

 private:
  DemoInput& input_;
};

class DemoPlatform : public ForwardingPlatform, private EventReceiver {
 public:
  DemoPlatform(Platform& inner, int track, std::ostream& captions)
      : ForwardingPlatform(inner), captions_(captions), files_(inner.files()), input_(track) {
    inner.setEventReceiver(this);
  }
  ~DemoPlatform() override { inner().setEventReceiver(nullptr); }

  void setEventReceiver(EventReceiver* receiver) override { receiver_ = receiver; }
  void enterShutdown() override {
    isInShutdown_ = true;
    inner().enterShutdown();
  }
  std::unique_ptr<KeyboardDevice> createKeyboardDevice() override {
    return std::make_unique<DemoKeyboard>(input_);
  }
  std::vector<std::string> attachedControllers() override { return {"demonstration"}; }
  std::unique_ptr<ControllerDevice> createControllerDevice(const std::string&) override {
    return std::make_unique<DemoWheel>(input_);
  }
  std::unique_ptr<Voice> createVoice() override {
    auto voice = std::make_unique<OverheardVoice>(inner().createVoice(), input_.driver, captions_);
    voice_ = voice.get();
    return voice;
  }
  Files& files() override { return files_; }
  void startProgram(const std::string&, int) override {}
  void carTicked(const TickReport& report) override {
    input_.driver.watch(report);
    inner().carTicked(report);
  }

 private:
  // The real player's keys only end the demonstration.
  void Form_KeyDown(int virtualKeyCode, int) override { isStopAsked_ = virtualKeyCode == kEscape; }
  void DirectXEvent8_DXCallback(int) override {}

  void doYield(int atMostMs) override {
    inner().yield(atMostMs);
    if (isInShutdown_) return;
    if (std::exchange(isStopAsked_, false)) throw WindowClosed();
    const bool isQuiet = !voice_ || voice_->RunningState() != Voice::kSpeaking;
    const DemoControls before = input_.controls;
    input_.controls = input_.driver.act(static_cast<std::uint32_t>(tickCount()), isQuiet);
    if (!receiver_) return;
    const Key* key = input_.controls.keyDown;
    if (key && key != before.keyDown) receiver_->Form_KeyDown(key->virtualKeyCode, 0);
    if (input_.isNotified && hasChanged(before.wheel, input_.controls.wheel)) {
      receiver_->DirectXEvent8_DXCallback(1);
    }
  }

  std::ostream& captions_;
  ReadOnlyFiles files_;
  DemoInput input_;
  EventReceiver* receiver_ = nullptr;
  Voice* voice_ = nullptr;  // lives with the game while it runs
  bool isStopAsked_ = false;
  bool isInShutdown_ = false;
};

}  // namespace

std::unique_ptr<Platform> makeDemoPlatform(Platform& inner, int track, std::ostream& captions) {
  return std::make_unique<DemoPlatform>(inner, track, captions);
}

}  // namespace vorn
