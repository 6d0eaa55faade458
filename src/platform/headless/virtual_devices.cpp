#include "platform/headless/virtual_devices.h"

namespace vorn {
namespace {

constexpr const char* kKeyboard = "keyboard";
constexpr const char* kController = "controller";

}  // namespace

VirtualKeyboard::VirtualKeyboard(World& world) : world_(world) {
  world_.trace.device(kKeyboard, "create");
}

VirtualKeyboard::~VirtualKeyboard() {
  world_.trace.device(kKeyboard, "release");
}

void VirtualKeyboard::SetCommonDataFormat(int format) {
  world_.trace.device(kKeyboard, "SetCommonDataFormat", format);
}

void VirtualKeyboard::SetCooperativeLevel(int flags) {
  world_.trace.device(kKeyboard, "SetCooperativeLevel", flags);
}

void VirtualKeyboard::Acquire() {
  isAcquired_ = true;
  world_.trace.device(kKeyboard, "Acquire");
}

KeyboardState VirtualKeyboard::GetDeviceStateKeyboard() {
  if (!isAcquired_) throw PlatformError("GetDeviceState", "", "the keyboard has not been acquired");
  return world_.taps.read(world_.keyboard, static_cast<std::uint32_t>(world_.clock.now()));
}

VirtualController::VirtualController(World& world) : world_(world) {
  world_.trace.device(kController, "create");
}

VirtualController::~VirtualController() {
  world_.controller.notify.reset();
  world_.trace.device(kController, "release");
}

void VirtualController::SetCommonDataFormat(int format) {
  world_.trace.device(kController, "SetCommonDataFormat", format);
}

void VirtualController::SetCooperativeLevel(int flags) {
  world_.trace.device(kController, "SetCooperativeLevel", flags);
}

void VirtualController::SetEventNotification(int handle) {
  world_.controller.notify = handle;
  world_.controller.hasChanged = false;
  world_.trace.device(kController, "SetEventNotification", handle);
}

void VirtualController::SetRange(int low, int high) {
  world_.trace.device(kController, "DIPROP_RANGE", {low, high});
}

void VirtualController::SetAxisProperty(AxisProperty property, int object, int value) {
  const char* const name = property == AxisProperty::kDeadZone ? "DIPROP_DEADZONE" : "DIPROP_SATURATION";
  world_.trace.device(kController, name, {object, value});
}

void VirtualController::Acquire() {
  isAcquired_ = true;
  world_.controller.isLost = false;
  world_.trace.device(kController, "Acquire");
}

void VirtualController::Unacquire() {
  isAcquired_ = false;
  world_.trace.device(kController, "Unacquire");
}

JoystickState VirtualController::GetDeviceStateJoystick() {
  if (!isAcquired_ || world_.controller.isLost) throw InputLost();
  return world_.controller.reading;
}

int VirtualController::buttonCount() {
  return static_cast<int>(JoystickState{}.buttons.size());
}

}  // namespace vorn
