#include "platform/desktop/controllers.h"

#include <SDL.h>

#include <algorithm>
#include <iostream>
#include <utility>

#include "platform/common/driving_device.h"
#include "platform/common/notices.h"
#include "platform/errors.h"

namespace vorn {
namespace {

LayoutKind kindAt(int index) {
  return layoutOf(sdlControllerFacts(index)).kind;
}

}  // namespace

class Controllers::Device final : public DrivingDevice {
 public:
  Device(Controllers& owner, int index) : owner_(owner), controller_(SdlController::open(index)) {
    if (!controller_) {
      throw PlatformError("CreateDevice", std::to_string(index), SDL_GetError());
    }
    owner_.devices_.push_back(this);
  }
  ~Device() override { std::erase(owner_.devices_, this); }

  void Poll() override {
    SDL_JoystickUpdate();
    owner_.lookAround();
  }
  int buttonCount() override { return vorn::buttonCount(controller_->layout()); }

  bool isAttached() const override { return controller_->isAttached(); }
  bool isWheel() const { return controller_->layout().kind == LayoutKind::kWheel; }
  void rumble(const Rumble& rumble) {
    if (isInHand()) controller_->rumble(rumble);
  }

 private:
  ControllerReading read() override;
  bool comeBack() override;

  Controllers& owner_;
  std::unique_ptr<SdlController> controller_;
};

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

ControllerReading Controllers::Device::read() {
  ControllerReading now = controller_->read();
  if (owner_.pedals_ && isWheel() && isAttached()) {
    now.join(owner_.pedals_->read());
  }
  return now;
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
