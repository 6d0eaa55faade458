#include "codriver/guest.h"

#include <utility>

#include "input/control_maps.h"

namespace vorn {
namespace {

constexpr const char* kPlayersController = "the player's controller";

class SharedKeyboard : public KeyboardDevice {
 public:
  explicit SharedKeyboard(Seat& seat) : seat_(seat) {}
  void SetCommonDataFormat(int) override {}
  void SetCooperativeLevel(int) override {}
  void Acquire() override {}
  KeyboardState GetDeviceStateKeyboard() override {
    return seat_.keyboard != nullptr ? seat_.keyboard->GetDeviceStateKeyboard() : KeyboardState{};
  }

 private:
  Seat& seat_;
};

/// Stays as the first game has set it up.
class SharedController : public ControllerDevice {
 public:
  explicit SharedController(Seat& seat) : seat_(seat) {}
  void SetCommonDataFormat(int) override {}
  void SetCooperativeLevel(int) override {}
  void SetEventNotification(int) override {}
  void SetRange(int, int) override {}
  void SetAxisProperty(AxisProperty, int, int) override {}
  void Acquire() override {
    if (seat_.controller != nullptr) seat_.controller->Acquire();  // where it had been lost
  }
  void Unacquire() override {}
  void Poll() override {
    if (seat_.controller != nullptr) seat_.controller->Poll();
  }
  JoystickState GetDeviceStateJoystick() override {
    return seat_.controller != nullptr ? seat_.controller->GetDeviceStateJoystick() : JoystickState{};
  }
  int buttonCount() override { return seat_.controller != nullptr ? seat_.controller->buttonCount() : 0; }

 private:
  Seat& seat_;
};

class SharedVoice : public Voice {
 public:
  explicit SharedVoice(Seat& seat) : seat_(seat) {}
  std::vector<std::string> GetVoices() override {
    return seat_.voice != nullptr ? seat_.voice->GetVoices() : std::vector<std::string>{};
  }

 private:
  void doSetVoice(int index) override {
    if (seat_.voice != nullptr) seat_.voice->setVoice(index);
  }
  void doSetVolume(int volume) override {
    if (seat_.voice != nullptr) seat_.voice->setVolume(volume);
  }
  void doSetRate(int rate) override {
    if (seat_.voice != nullptr) seat_.voice->setRate(rate);
  }
  void doSpeak(const std::string& text, int flags) override {
    if (seat_.voice != nullptr) seat_.voice->Speak(text, flags);
  }
  int doRunningState() override { return seat_.voice != nullptr ? seat_.voice->RunningState() : 1; }

  Seat& seat_;
};

}  // namespace

EventReceiver* Seat::listener() const {
  return guests.empty() ? receiver : guests.back()->receiver();
}

GuestPlatform::GuestPlatform(Platform& inner, Seat& seat)
    : ForwardingPlatform(inner), seat_(seat), files_(inner.files()) {
  seat_.guests.push_back(this);
}

GuestPlatform::~GuestPlatform() {
  seat_.guests.pop_back();
}

std::unique_ptr<KeyboardDevice> GuestPlatform::createKeyboardDevice() {
  return std::make_unique<SharedKeyboard>(seat_);
}

std::vector<std::string> GuestPlatform::attachedControllers() {
  if (seat_.controller == nullptr) return {};
  return {kPlayersController};
}

std::unique_ptr<ControllerDevice> GuestPlatform::createControllerDevice(const std::string&) {
  return std::make_unique<SharedController>(seat_);
}

std::unique_ptr<Voice> GuestPlatform::createVoice() {
  return std::make_unique<SharedVoice>(seat_);
}

GuestGame::GuestGame(Platform& platform, Seat& seat)
    : state(platform), seat_(seat), watchedBefore_(std::exchange(seat.game, &state)), events_(state) {
  const GameState& first = *watchedBefore_;
  jhk(state);
  getJoyCFG(state);
  getKeyCFG(state);
  static_cast<OptionsState&>(state) = first;
  state.trackNames = first.trackNames;
  state.trackChoice = first.trackChoice;
  state.inputDevice = first.inputDevice;
  state.soundVolume = first.soundVolume;
  state.bufferFlags = first.bufferFlags;
  state.voiceIndex = first.voiceIndex;
  state.lastVoiceIndex = first.lastVoiceIndex;
  state.speechRate = first.speechRate;
  state.voiceVolume = first.voiceVolume;
  state.speechVoice = platform.createVoice();
  setUpKeyboard(state);
  detectController(state);
  platform.setEventReceiver(&events_);
}

GuestGame::~GuestGame() {
  state.platform.setEventReceiver(nullptr);
  seat_.game = watchedBefore_;
}

}  // namespace vorn
