#include "platform/desktop/controllers.h"

#include <SDL.h>

#include <algorithm>
#include <array>
#include <iostream>

#include "platform/errors.h"

namespace vorn {
namespace {

constexpr double kFullTravel = 32767;
constexpr int kMostButtons = 32;

std::string guidText(SDL_JoystickGUID guid) {
  std::array<char, 33> text{};
  SDL_JoystickGetGUIDString(guid, text.data(), static_cast<int>(text.size()));
  return text.data();
}

/// Where the wheel's pedals lie among its axes.
struct Pedals {
  int gas, brake;
};

/// Wheels list their pedals behind the steering axis, the clutch, where there is one, before the two others.
std::optional<Pedals> pedalsOf(SDL_Joystick* joystick) {
  constexpr int kWithPedals = 3, kWithClutch = 4;
  const int axes = SDL_JoystickNumAxes(joystick);
  if (SDL_JoystickGetType(joystick) != SDL_JOYSTICK_TYPE_WHEEL || axes < kWithPedals) {
    return std::nullopt;
  }
  return axes >= kWithClutch ? Pedals{2, 3} : Pedals{1, 2};
}

/// SDL's axes for X, Y, Rx and Ry; -1 where there is none.
using AxisNumbers = std::array<int, 4>;

AxisNumbers gamepadAxes(SDL_GameController* gamepad) {
  constexpr SDL_GameControllerAxis kSticks[] = {SDL_CONTROLLER_AXIS_LEFTX, SDL_CONTROLLER_AXIS_LEFTY,
                                                SDL_CONTROLLER_AXIS_RIGHTX, SDL_CONTROLLER_AXIS_RIGHTY};
  AxisNumbers numbers{};
  std::transform(std::begin(kSticks), std::end(kSticks), numbers.begin(), [&](SDL_GameControllerAxis stick) {
    const auto bind = SDL_GameControllerGetBindForAxis(gamepad, stick);
    return bind.bindType == SDL_CONTROLLER_BINDTYPE_AXIS ? bind.value.axis : -1;
  });
  return numbers;
}

AxisNumbers plainAxes(int count) {
  constexpr int kWithThrottle = 5;
  AxisNumbers numbers = count >= kWithThrottle ? AxisNumbers{0, 1, 3, 4} : AxisNumbers{0, 1, 2, 3};
  for (int& number : numbers) {
    number = number < count ? number : -1;
  }
  return numbers;
}

bool operator==(const JoystickState& one, const JoystickState& other) {
  return one.x == other.x && one.y == other.y && one.rx == other.rx && one.ry == other.ry &&
         one.buttons == other.buttons;
}

}  // namespace

class Controllers::Device final : public ControllerDevice {
 public:
  Device(Controllers& owner, int index) : owner_(owner) {
    if (!openAt(index)) {
      throw PlatformError("CreateDevice", std::to_string(index), SDL_GetError());
    }
    owner_.devices_.push_back(this);
  }
  ~Device() override {
    std::erase(owner_.devices_, this);
    close();
  }
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  void SetCommonDataFormat(int format) override {
    constexpr int kJoystick = 3;
    if (format != kJoystick) {
      throw PlatformError("SetCommonDataFormat", std::to_string(format), "this is a game controller");
    }
  }
  void SetCooperativeLevel(int) override {}  // always shared, always in the background
  void SetEventNotification(int handle) override { notify_ = handle; }
  void SetRange(int low, int high) override {
    if (low >= high) {
      throw PlatformError("SetRange", std::to_string(low) + ", " + std::to_string(high), "an empty range");
    }
    for (AxisLaw& law : laws_) {
      law.low = low;
      law.high = high;
    }
  }
  void SetAxisProperty(AxisProperty property, int object, int value) override;
  void Acquire() override {
    isAcquired_ = true;
    told_ = reading();
  }
  void Unacquire() override { isAcquired_ = false; }
  void Poll() override {
    SDL_JoystickUpdate();
    comeBack();
  }
  JoystickState GetDeviceStateJoystick() override {
    if (!isAcquired_) {
      throw InputLost();
    }
    return reading();
  }
  int buttonCount() override { return std::clamp(SDL_JoystickNumButtons(joystick_), 0, kMostButtons); }

  /// Opens the controller anew where it had been unplugged and is there again.
  void comeBack();
  void notify(EventReceiver* receiver);

 private:
  bool openAt(int index);
  void close();
  JoystickState reading() const;
  double travelOf(std::size_t axis) const;
  double pressed(int pedal) const;

  Controllers& owner_;
  SDL_Joystick* joystick_ = nullptr;
  SDL_GameController* gamepad_ = nullptr;
  std::string guid_;
  AxisNumbers axes_{};
  std::optional<Pedals> pedals_;
  std::array<AxisLaw, 4> laws_;  ///< of X, Y, Rx and Ry
  std::optional<int> notify_;
  bool isAcquired_ = false;
  JoystickState told_;  ///< what the game has been told of
};

bool Controllers::Device::openAt(int index) {
  joystick_ = SDL_JoystickOpen(index);
  if (joystick_ == nullptr) {
    return false;
  }
  guid_ = guidText(SDL_JoystickGetGUID(joystick_));
  pedals_ = pedalsOf(joystick_);
  gamepad_ = !pedals_ && SDL_IsGameController(index) ? SDL_GameControllerOpen(index) : nullptr;
  axes_ = gamepad_ != nullptr ? gamepadAxes(gamepad_) : plainAxes(SDL_JoystickNumAxes(joystick_));
  return true;
}

void Controllers::Device::close() {
  if (gamepad_ != nullptr) {
    SDL_GameControllerClose(gamepad_);
  }
  gamepad_ = nullptr;
  SDL_JoystickClose(joystick_);
}

void Controllers::Device::comeBack() {
  if (SDL_JoystickGetAttached(joystick_)) {
    return;
  }
  for (int index = 0; index < SDL_NumJoysticks(); ++index) {
    if (guidText(SDL_JoystickGetDeviceGUID(index)) == guid_) {
      close();
      openAt(index);
      return;
    }
  }
}

void Controllers::Device::SetAxisProperty(AxisProperty property, int object, int value) {
  if ((object != kObjectX && object != kObjectY) || value < 0 || value > 10000) {
    throw PlatformError("SetProperty", std::to_string(object) + ", " + std::to_string(value), "out of range");
  }
  AxisLaw& law = laws_[object == kObjectX ? 0 : 1];
  (property == AxisProperty::kDeadZone ? law.deadZone : law.saturation) = value;
}

/// Everything at rest where the controller has vanished.
JoystickState Controllers::Device::reading() const {
  std::array<int, 4> axes;
  for (std::size_t axis = 0; axis < axes.size(); ++axis) {
    axes[axis] = axisReading(travelOf(axis), laws_[axis]);
  }
  JoystickState state{axes[0], axes[1], axes[2], axes[3], {}};
  if (SDL_JoystickGetAttached(joystick_)) {
    const int buttons = std::min(SDL_JoystickNumButtons(joystick_), kMostButtons);
    for (int button = 0; button < buttons; ++button) {
      state.buttons[static_cast<std::size_t>(button)] =
          SDL_JoystickGetButton(joystick_, button) != 0 ? 0x80 : 0;
    }
  }
  return state;
}

/// -1 .. 1 of X, Y, Rx or Ry.
double Controllers::Device::travelOf(std::size_t axis) const {
  constexpr std::size_t kY = 1;
  if (!SDL_JoystickGetAttached(joystick_)) {
    return 0;
  }
  if (pedals_ && axis == kY) {
    return pressed(pedals_->brake) - pressed(pedals_->gas);
  }
  return axes_[axis] < 0 ? 0 : SDL_JoystickGetAxis(joystick_, axes_[axis]) / kFullTravel;
}

/// How far a pedal is down, 0 .. 1. It rests at one end of its axis: the end that
/// it was nearer to when it was plugged in, and mostly the upper one.
double Controllers::Device::pressed(int pedal) const {
  std::int16_t first = 0;
  const bool isKnown = SDL_JoystickGetAxisInitialState(joystick_, pedal, &first);
  const double rest = isKnown && first < 0 ? -kFullTravel : kFullTravel;
  return std::clamp(std::abs(SDL_JoystickGetAxis(joystick_, pedal) - rest) / (2 * kFullTravel), 0.0, 1.0);
}

void Controllers::Device::notify(EventReceiver* receiver) {
  comeBack();
  if (!isAcquired_ || !notify_ || receiver == nullptr) {
    return;
  }
  const JoystickState now = reading();
  if (now == told_) {
    return;
  }
  told_ = now;
  receiver->DirectXEvent8_DXCallback(*notify_);
}

Controllers::Controllers() {
  SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
  if (SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) != 0) {
    std::cerr << "Game controllers cannot be used: " << SDL_GetError() << std::endl;
  }
}

Controllers::~Controllers() {
  SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
}

std::vector<std::string> Controllers::attached() const {
  std::vector<std::string> identifiers;
  for (int index = 0; index < SDL_NumJoysticks(); ++index) {
    identifiers.push_back(std::to_string(SDL_JoystickGetDeviceInstanceID(index)));
  }
  return identifiers;
}

std::unique_ptr<ControllerDevice> Controllers::open(const std::string& identifier) {
  const auto identifiers = attached();
  const auto found = std::find(identifiers.begin(), identifiers.end(), identifier);
  if (found == identifiers.end()) {
    throw PlatformError("CreateDevice", identifier, "no such controller is attached");
  }
  return std::make_unique<Device>(*this, static_cast<int>(found - identifiers.begin()));
}

void Controllers::notify(EventReceiver* receiver) {
  const std::vector<Device*> devices = devices_;  // the receiver may close one
  for (Device* device : devices) {
    if (std::find(devices_.begin(), devices_.end(), device) != devices_.end()) {
      device->notify(receiver);
    }
  }
}

}  // namespace vorn
