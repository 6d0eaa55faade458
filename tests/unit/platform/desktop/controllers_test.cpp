#include "platform/desktop/controllers.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <memory>

namespace vorn {
namespace {

/// A controller that exists only for SDL.
class VirtualController {
 public:
  VirtualController(SDL_JoystickType type, int axes, int buttons, const char* name = "Test controller")
      : buttons_(buttons) {
    SDL_VirtualJoystickDesc description{};
    description.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
    description.type = static_cast<std::uint16_t>(type);
    description.naxes = static_cast<std::uint16_t>(axes);
    description.nbuttons = static_cast<std::uint16_t>(buttons);
    description.name = name;
    index_ = SDL_JoystickAttachVirtualEx(&description);
    instance_ = SDL_JoystickGetDeviceInstanceID(index_);
    joystick_ = SDL_JoystickOpen(index_);
    EXPECT_NE(joystick_, nullptr) << SDL_GetError();
  }
  ~VirtualController() { unplug(); }

  std::string identifier() const { return std::to_string(instance_); }
  void axis(int number, int value) {
    EXPECT_EQ(SDL_JoystickSetVirtualAxis(joystick_, number, static_cast<std::int16_t>(value)), 0)
        << SDL_GetError();
  }
  void button(int number, bool down) {
    EXPECT_EQ(SDL_JoystickSetVirtualButton(joystick_, number, down ? 1 : 0), 0) << SDL_GetError();
  }
  /// Opened anew, it stands as it was left: so a controller rests when it is plugged in.
  void openAnew() {
    SDL_JoystickClose(joystick_);
    joystick_ = SDL_JoystickOpen(index_);
    EXPECT_NE(joystick_, nullptr) << SDL_GetError();
  }
  void unplug() {
    if (joystick_ == nullptr) {
      return;
    }
    SDL_JoystickClose(std::exchange(joystick_, nullptr));
    for (int index = 0; index < SDL_NumJoysticks(); ++index) {
      if (SDL_JoystickGetDeviceInstanceID(index) == instance_) {
        SDL_JoystickDetachVirtual(index);
        return;
      }
    }
  }

 private:
  int buttons_;
  int index_ = -1;
  SDL_JoystickID instance_ = -1;
  SDL_Joystick* joystick_ = nullptr;
};

struct Notified : EventReceiver {
  void Form_KeyDown(int, int) override {}
  void DirectXEvent8_DXCallback(int eventId) override {
    ++times;
    lastEvent = eventId;
  }
  int times = 0;
  int lastEvent = -1;
};

class ControllersTest : public testing::Test {
 protected:
  /// What the platform does in a yield.
  void yield() {
    SDL_PumpEvents();
    controllers.notify(&receiver);
  }
  std::unique_ptr<ControllerDevice> acquired(const VirtualController& controller) {
    auto device = controllers.open(controller.identifier());
    device->SetCommonDataFormat(3);
    device->SetCooperativeLevel(kBackgroundNonExclusive);
    device->SetEventNotification(7);
    device->SetRange(-10000, 10000);
    device->Acquire();
    return device;
  }

  Controllers controllers;
  Notified receiver;
};

TEST_F(ControllersTest, TheFirstAttachedStandsFirst) {
  EXPECT_TRUE(controllers.attached().empty());
  VirtualController first(SDL_JOYSTICK_TYPE_WHEEL, 3, 10), second(SDL_JOYSTICK_TYPE_GAMECONTROLLER, 6, 15);
  EXPECT_EQ(controllers.attached(), (std::vector<std::string>{first.identifier(), second.identifier()}));
  first.unplug();
  EXPECT_EQ(controllers.attached(), (std::vector<std::string>{second.identifier()}));
  EXPECT_THROW(controllers.open(first.identifier()), PlatformError);
  EXPECT_THROW(controllers.open("no such thing"), PlatformError);
}

TEST_F(ControllersTest, AJoystickIsReadByItsFirstTwoAxesAndThoseBehindTheThrottle) {
  VirtualController stick(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 5, 12);
  const auto device = acquired(stick);
  stick.axis(0, -32768);
  stick.axis(1, 32767);
  stick.axis(2, 12345);
  stick.axis(3, 16384);
  stick.axis(4, -16384);
  yield();
  const JoystickState state = device->GetDeviceStateJoystick();
  EXPECT_EQ(state.x, -10000);
  EXPECT_EQ(state.y, 10000);
  EXPECT_NEAR(state.rx, 5000, 1);
  EXPECT_NEAR(state.ry, -5000, 1);
}

TEST_F(ControllersTest, AxesThatAreNotThereReadTheMiddle) {
  VirtualController stick(SDL_JOYSTICK_TYPE_UNKNOWN, 1, 2);
  const auto device = acquired(stick);
  stick.axis(0, 32767);
  yield();
  const JoystickState state = device->GetDeviceStateJoystick();
  EXPECT_EQ(state.x, 10000);
  EXPECT_EQ(state.y, 0);
  EXPECT_EQ(state.rx, 0);
  EXPECT_EQ(state.ry, 0);
  EXPECT_EQ(device->buttonCount(), 2);
}

TEST_F(ControllersTest, AGamepadIsReadByItsSticks) {
  VirtualController pad(SDL_JOYSTICK_TYPE_GAMECONTROLLER, SDL_CONTROLLER_AXIS_MAX, SDL_CONTROLLER_BUTTON_MAX);
  const auto device = acquired(pad);
  pad.axis(SDL_CONTROLLER_AXIS_LEFTX, 32767);
  pad.axis(SDL_CONTROLLER_AXIS_LEFTY, -32768);
  pad.axis(SDL_CONTROLLER_AXIS_RIGHTX, -32768);
  pad.axis(SDL_CONTROLLER_AXIS_RIGHTY, 32767);
  pad.axis(SDL_CONTROLLER_AXIS_TRIGGERLEFT, 20000);
  yield();
  const JoystickState state = device->GetDeviceStateJoystick();
  EXPECT_EQ(state.x, 10000);
  EXPECT_EQ(state.y, -10000);
  EXPECT_EQ(state.rx, -10000);
  EXPECT_EQ(state.ry, 10000);
}

TEST_F(ControllersTest, AWheelsPedalsMakeOneAxisGasForward) {
  for (const bool withClutch : {false, true}) {
    VirtualController wheel(SDL_JOYSTICK_TYPE_WHEEL, withClutch ? 4 : 3, 10);
    const int gas = withClutch ? 2 : 1, brake = gas + 1;
    wheel.axis(gas, 32767);
    wheel.axis(brake, 32767);
    yield();
    const auto device = acquired(wheel);
    const auto y = [&] {
      yield();
      return device->GetDeviceStateJoystick().y;
    };
    EXPECT_EQ(y(), 0) << "pedals at rest";
    wheel.axis(gas, -32768);
    EXPECT_EQ(y(), -10000);
    wheel.axis(gas, 0);
    EXPECT_NEAR(y(), -5000, 1);
    wheel.axis(gas, 32767);
    wheel.axis(brake, -32768);
    EXPECT_EQ(y(), 10000);
    wheel.axis(0, -16384);
    yield();
    EXPECT_NEAR(device->GetDeviceStateJoystick().x, -5000, 1);
  }
}

TEST_F(ControllersTest, APedalMayRestAtTheLowEndOfItsAxis) {
  VirtualController wheel(SDL_JOYSTICK_TYPE_WHEEL, 3, 10);
  wheel.axis(1, -32768);  // gas
  wheel.axis(2, 32767);   // brake, as usual
  yield();
  wheel.openAnew();
  const auto device = acquired(wheel);
  const auto y = [&] {
    yield();
    return device->GetDeviceStateJoystick().y;
  };
  EXPECT_EQ(y(), 0) << "pedals at rest";
  wheel.axis(1, 32767);
  EXPECT_EQ(y(), -10000);
  wheel.axis(1, 0);
  EXPECT_NEAR(y(), -5000, 1);
  wheel.axis(1, -32768);
  wheel.axis(2, -32768);
  EXPECT_EQ(y(), 10000);
}

TEST_F(ControllersTest, AWheelWithOnePedalAxisIsReadAsItIs) {
  VirtualController wheel(SDL_JOYSTICK_TYPE_WHEEL, 2, 10);
  const auto device = acquired(wheel);
  wheel.axis(1, -32768);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, -10000);
}

TEST_F(ControllersTest, DeadZoneAndSaturationHoldForTheirAxisAlone) {
  VirtualController stick(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 5, 12);
  const auto device = acquired(stick);
  device->SetAxisProperty(AxisProperty::kDeadZone, kObjectX, 800);
  device->SetAxisProperty(AxisProperty::kSaturation, kObjectY, 5000);
  for (int axis = 0; axis < 5; ++axis) {
    stick.axis(axis, 2621);  // 8 % of the travel
  }
  yield();
  JoystickState state = device->GetDeviceStateJoystick();
  EXPECT_EQ(state.x, 0);
  EXPECT_NEAR(state.y, 1600, 2);
  EXPECT_NEAR(state.rx, 800, 1);
  EXPECT_NEAR(state.ry, 800, 1);
  EXPECT_THROW(device->SetAxisProperty(AxisProperty::kDeadZone, kObjectX, 10001), PlatformError);
  EXPECT_THROW(device->SetAxisProperty(AxisProperty::kDeadZone, 8, 100), PlatformError);
  EXPECT_THROW(device->SetRange(5, 5), PlatformError);
  EXPECT_THROW(device->SetCommonDataFormat(1), PlatformError);
}

TEST_F(ControllersTest, ButtonsAreReadUpToTheThirtySecond) {
  VirtualController wheel(SDL_JOYSTICK_TYPE_WHEEL, 2, 40);
  const auto device = acquired(wheel);
  EXPECT_EQ(device->buttonCount(), 32);
  wheel.button(0, true);
  wheel.button(31, true);
  wheel.button(35, true);
  yield();
  const JoystickState state = device->GetDeviceStateJoystick();
  for (std::size_t button = 0; button < 32; ++button) {
    EXPECT_EQ(state.buttons[button] != 0, button == 0 || button == 31) << button;
  }
}

TEST_F(ControllersTest, AChangeIsToldOnceAtTheNextYield) {
  VirtualController stick(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 5, 12);
  const auto device = acquired(stick);
  yield();
  EXPECT_EQ(receiver.times, 0);
  stick.button(3, true);
  EXPECT_EQ(receiver.times, 0);
  yield();
  EXPECT_EQ(receiver.times, 1);
  EXPECT_EQ(receiver.lastEvent, 7);
  yield();
  EXPECT_EQ(receiver.times, 1);
  stick.button(3, false);
  stick.axis(4, 3000);
  device->Poll();
  yield();
  EXPECT_EQ(receiver.times, 2);
}

TEST_F(ControllersTest, WhatWasHeldBeforeItWasAcquiredIsNoChange) {
  VirtualController stick(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 5, 12);
  stick.axis(0, -32768);
  stick.button(1, true);
  SDL_PumpEvents();
  const auto device = acquired(stick);
  stick.axis(0, -32768);
  yield();
  EXPECT_EQ(receiver.times, 0);
  EXPECT_EQ(device->GetDeviceStateJoystick().x, -10000);
}

TEST_F(ControllersTest, WhatTheDeadZoneSwallowsIsNoChange) {
  VirtualController stick(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 5, 12);
  const auto device = acquired(stick);
  device->SetAxisProperty(AxisProperty::kDeadZone, kObjectX, 800);
  stick.axis(0, 500);
  yield();
  EXPECT_EQ(receiver.times, 0);
}

TEST_F(ControllersTest, UnacquiredItTellsNothingAndCannotBeRead) {
  VirtualController stick(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 5, 12);
  const auto device = acquired(stick);
  device->Unacquire();
  stick.axis(0, 30000);
  yield();
  EXPECT_EQ(receiver.times, 0);
  EXPECT_THROW(device->GetDeviceStateJoystick(), InputLost);
  device->Acquire();
  EXPECT_GT(device->GetDeviceStateJoystick().x, 9000);
}

TEST_F(ControllersTest, PulledOutItReadsNeutralOnceAndNeverFails) {
  VirtualController stick(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 5, 12);
  const auto device = acquired(stick);
  stick.axis(0, 30000);
  stick.button(2, true);
  yield();
  EXPECT_EQ(receiver.times, 1);
  stick.unplug();
  yield();
  EXPECT_EQ(receiver.times, 2);
  for (int i = 0; i < 10; ++i) {
    EXPECT_NO_THROW(device->Poll());
    yield();
  }
  EXPECT_EQ(receiver.times, 2);
  const JoystickState state = device->GetDeviceStateJoystick();
  EXPECT_EQ(state.x, 0);
  EXPECT_EQ(state.buttons[2], 0);
}

TEST_F(ControllersTest, PluggedInAgainItGoesOn) {
  auto stick = std::make_unique<VirtualController>(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 5, 12);
  const auto device = acquired(*stick);
  device->SetAxisProperty(AxisProperty::kDeadZone, kObjectX, 800);
  stick.reset();
  yield();
  VirtualController other(SDL_JOYSTICK_TYPE_WHEEL, 2, 4, "Another model");
  yield();
  other.axis(0, 32767);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().x, 0);
  VirtualController again(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 5, 12);
  yield();
  again.axis(0, 2000);
  again.axis(1, 32767);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().x, 0);
  EXPECT_EQ(device->GetDeviceStateJoystick().y, 10000);
}

TEST_F(ControllersTest, DestroyedItIsForgotten) {
  VirtualController stick(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 5, 12);
  auto device = acquired(stick);
  device.reset();
  stick.axis(0, 30000);
  yield();
  EXPECT_EQ(receiver.times, 0);
}

}  // namespace
}  // namespace vorn
