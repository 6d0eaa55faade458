#include "platform/desktop/controllers.h"

#include <SDL.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iostream>
#include <optional>
#include <utility>

#include "platform/common/axis_law.h"
#include "platform/common/notices.h"
#include "platform/errors.h"

namespace vorn {
namespace {

constexpr const char* kPedalsGone = " The pedals are disconnected. ";
constexpr const char* kPedalsBack = " The pedals are connected. ";

LayoutKind kindAt(int index) {
  return layoutOf(sdlControllerFacts(index)).kind;
}

bool operator==(const JoystickState& one, const JoystickState& other) {
  return one.x == other.x && one.y == other.y && one.rx == other.rx && one.ry == other.ry &&
         one.buttons == other.buttons;
}

}  // namespace

class Controllers::Device final : public ControllerDevice {
 public:
  Device(Controllers& owner, int index) : owner_(owner), controller_(SdlController::open(index)) {
    if (!controller_) {
      throw PlatformError("CreateDevice", std::to_string(index), SDL_GetError());
    }
    owner_.devices_.push_back(this);
  }
  ~Device() override { std::erase(owner_.devices_, this); }
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
    owner_.lookAround();
  }
  JoystickState GetDeviceStateJoystick() override {
    if (!isAcquired_) {
      throw InputLost();
    }
    return reading();
  }
  int buttonCount() override { return vorn::buttonCount(controller_->layout()); }

  bool isAttached() const { return controller_->isAttached(); }
  bool isWheel() const { return controller_->layout().kind == LayoutKind::kWheel; }
  /// Tells `news` of its being unplugged, and goes on with one of its model where there is one.
  void lookAfterPlug(std::vector<std::string>& news);
  void notify(EventReceiver* receiver);
  void rumble(const Rumble& rumble);

 private:
  JoystickState reading() const;
  bool comeBack();

  Controllers& owner_;
  std::unique_ptr<SdlController> controller_;
  std::array<AxisLaw, 4> laws_;  ///< of X, Y, Rx and Ry
  std::optional<int> notify_;
  bool isAcquired_ = false;
  bool isGone_ = false;                  ///< and the player knows
  JoystickState told_;                   ///< what the game has been told of
  std::optional<std::uint64_t> usedAt_;  ///< by SDL's clock; nothing before its first use
};

void Controllers::Device::lookAfterPlug(std::vector<std::string>& news) {
  if (isAttached()) {
    return;
  }
  if (!std::exchange(isGone_, true)) {
    news.push_back(kControllerGone);
  }
  if (comeBack()) {
    isGone_ = false;
    news.push_back(kControllerBack);
  }
}

bool Controllers::Device::comeBack() {
  for (int index = 0; index < SDL_NumJoysticks(); ++index) {
    if (sdlModelId(index) == controller_->modelId()) {
      if (auto again = SdlController::open(index)) {
        controller_ = std::move(again);
        return true;
      }
    }
  }
  return false;
}

void Controllers::Device::SetAxisProperty(AxisProperty property, int object, int value) {
  if ((object != kObjectX && object != kObjectY) || value < 0 || value > 10000) {
    throw PlatformError("SetProperty", std::to_string(object) + ", " + std::to_string(value), "out of range");
  }
  AxisLaw& law = laws_[object == kObjectX ? 0 : 1];
  (property == AxisProperty::kDeadZone ? law.deadZone : law.saturation) = value;
}

JoystickState Controllers::Device::reading() const {
  ControllerReading now = controller_->read();
  if (owner_.pedals_ && isWheel() && isAttached()) {
    const ControllerReading pedals = owner_.pedals_->read();
    now.gas = std::max(now.gas, pedals.gas);
    now.brake = std::max(now.brake, pedals.brake);
  }
  return {axisReading(now.steering, laws_[0]), axisReading(now.gasAndBrake(), laws_[1]),
          axisReading(now.secondX, laws_[2]), axisReading(now.secondY, laws_[3]), now.buttons};
}

void Controllers::Device::notify(EventReceiver* receiver) {
  if (!isAcquired_ || !notify_ || receiver == nullptr) {
    return;
  }
  const JoystickState now = reading();
  if (now == told_) {
    return;
  }
  told_ = now;
  usedAt_ = SDL_GetTicks64();
  receiver->DirectXEvent8_DXCallback(*notify_);
}

void Controllers::Device::rumble(const Rumble& rumble) {
  if (usedAt_ && std::chrono::milliseconds(SDL_GetTicks64() - *usedAt_) < kStillInHand) {
    controller_->rumble(rumble);
  }
}

Controllers::Controllers() {
  SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
  SDL_SetHint(SDL_HINT_GAMECONTROLLER_USE_BUTTON_LABELS, "0");  // a button is known by its place
  if (SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) != 0) {
    std::cerr << "Game controllers cannot be used: " << SDL_GetError() << std::endl;
  }
  known_ = instances();
  findPedals();
}

Controllers::~Controllers() {
  pedals_.reset();
  SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
}

Controllers::Instances Controllers::instances() {
  Instances present;
  for (int index = 0; index < SDL_NumJoysticks(); ++index) {
    present.push_back(SDL_JoystickGetDeviceInstanceID(index));
  }
  return present;
}

void Controllers::findPedals() {
  for (int index = 0; index < SDL_NumJoysticks() && !pedals_; ++index) {
    if (kindAt(index) == LayoutKind::kPedals) {
      pedals_ = SdlController::open(index);
    }
  }
}

/// Takes notice of what has been plugged in or out since it was last looked at.
void Controllers::lookAround() {
  for (Device* device : devices_) {
    device->lookAfterPlug(news_);
  }
  const Instances before = std::exchange(known_, instances());
  if (known_ == before) {
    return;
  }
  lookAfterPedals();
  const bool isOneInUse = std::any_of(devices_.begin(), devices_.end(),
                                      [](const Device* device) { return device->isAttached(); });
  for (int index = 0; index < SDL_NumJoysticks() && !isOneInUse; ++index) {
    const SDL_JoystickID instance = SDL_JoystickGetDeviceInstanceID(index);
    const bool isNew = std::find(before.begin(), before.end(), instance) == before.end();
    if (isNew && canDrive(kindAt(index))) {
      news_.push_back(kAnotherController);
    }
  }
}

/// Pedals say nothing to a player without a wheel.
void Controllers::lookAfterPedals() {
  const bool count =
      std::any_of(devices_.begin(), devices_.end(), [](const Device* device) { return device->isWheel(); });
  if (pedals_ && !pedals_->isAttached()) {
    pedals_.reset();
    if (count) news_.push_back(kPedalsGone);
  }
  if (!pedals_) {
    findPedals();
    if (pedals_ && count) news_.push_back(kPedalsBack);
  }
}

std::vector<std::string> Controllers::attached() const {
  std::vector<std::string> identifiers;
  for (int index = 0; index < SDL_NumJoysticks(); ++index) {
    if (canDrive(kindAt(index))) {
      identifiers.push_back(std::to_string(SDL_JoystickGetDeviceInstanceID(index)));
    }
  }
  return identifiers;
}

std::vector<ControllerFacts> Controllers::facts() const {
  std::vector<ControllerFacts> all;
  for (int index = 0; index < SDL_NumJoysticks(); ++index) {
    if (const auto controller = SdlController::open(index)) {
      all.push_back(controller->facts());
    }
  }
  return all;
}

std::unique_ptr<ControllerDevice> Controllers::open(const std::string& identifier) {
  const Instances present = instances();
  const auto found = std::find_if(present.begin(), present.end(), [&](SDL_JoystickID instance) {
    return std::to_string(instance) == identifier;
  });
  if (found == present.end()) {
    throw PlatformError("CreateDevice", identifier, "no such controller is attached");
  }
  return std::make_unique<Device>(*this, static_cast<int>(found - present.begin()));
}

void Controllers::notify(EventReceiver* receiver) {
  lookAround();
  const std::vector<Device*> devices = devices_;  // the receiver may close one
  for (Device* device : devices) {
    if (std::find(devices_.begin(), devices_.end(), device) != devices_.end()) {
      device->notify(receiver);
    }
  }
}

void Controllers::rumble(const Rumble& rumble) {
  for (Device* device : devices_) {
    device->rumble(rumble);
  }
}

std::vector<std::string> Controllers::takeNews() {
  return std::exchange(news_, {});
}

}  // namespace vorn
