#include "platform/desktop/controllers.h"

#include <SDL.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "support/virtual_controller.h"

namespace vorn {
namespace {

constexpr int kLow = -32768, kHigh = 32767;

VirtualModel flightStick() {
  return {.type = SDL_JOYSTICK_TYPE_FLIGHT_STICK, .axes = {0, 0, 0, 0, 0}, .buttons = 12};
}

/// SDL tells the places of its controls by itself. Triggers rest at the low end.
VirtualModel gamepad() {
  return {.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER,
          .axes = {0, 0, 0, 0, kLow, kLow},
          .buttons = SDL_CONTROLLER_BUTTON_MAX};
}

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
  VirtualController first({.type = SDL_JOYSTICK_TYPE_WHEEL, .axes = {0, kHigh, kHigh}}), second(gamepad());
  EXPECT_EQ(controllers.attached(), (std::vector<std::string>{first.identifier(), second.identifier()}));
  first.unplug();
  EXPECT_EQ(controllers.attached(), (std::vector<std::string>{second.identifier()}));
  EXPECT_THROW(controllers.open(first.identifier()), PlatformError);
  EXPECT_THROW(controllers.open("no such thing"), PlatformError);
}

TEST_F(ControllersTest, AJoystickIsReadByItsFirstTwoAxesAndThoseBehindTheThrottle) {
  VirtualController stick(flightStick());
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
  VirtualController stick({.axes = {0}, .buttons = 2});
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
  VirtualController pad(gamepad());
  const auto device = acquired(pad);
  pad.axis(SDL_CONTROLLER_AXIS_LEFTX, 32767);
  pad.axis(SDL_CONTROLLER_AXIS_LEFTY, -32768);
  pad.axis(SDL_CONTROLLER_AXIS_RIGHTX, -32768);
  pad.axis(SDL_CONTROLLER_AXIS_RIGHTY, 32767);
  yield();
  const JoystickState state = device->GetDeviceStateJoystick();
  EXPECT_EQ(state.x, 10000);
  EXPECT_EQ(state.y, -10000);
  EXPECT_EQ(state.rx, -10000);
  EXPECT_EQ(state.ry, 10000);
}

TEST_F(ControllersTest, AGamepadsTriggersAreGasAndBrake) {
  VirtualController pad(gamepad());
  const auto device = acquired(pad);
  const auto y = [&] {
    yield();
    return device->GetDeviceStateJoystick().y;
  };
  EXPECT_EQ(y(), 0);
  pad.axis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, 0);
  EXPECT_NEAR(y(), -5000, 1);
  pad.axis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, kHigh);
  EXPECT_EQ(y(), -10000);
  pad.axis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, kLow);
  pad.axis(SDL_CONTROLLER_AXIS_TRIGGERLEFT, kHigh);
  EXPECT_EQ(y(), 10000);
}

TEST_F(ControllersTest, TheDirectionalPadIsTheStickPushedAllTheWay) {
  VirtualController pad(gamepad());
  const auto device = acquired(pad);
  pad.button(SDL_CONTROLLER_BUTTON_DPAD_UP, true);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, -10000);
  pad.button(SDL_CONTROLLER_BUTTON_DPAD_UP, false);
  pad.button(SDL_CONTROLLER_BUTTON_DPAD_DOWN, true);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, 10000);
}

TEST_F(ControllersTest, AWheelsHatMovesInMenusToo) {
  VirtualController wheel({.axes = {0, 0}, .hats = 1});
  const auto device = acquired(wheel);
  wheel.hat(SDL_HAT_UP);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, -10000);
  wheel.hat(SDL_HAT_DOWN);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, 10000);
  wheel.hat(SDL_HAT_CENTERED);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, 0);
}

/// Two makes whose buttons have other numbers, and one whose letters have other places.
TEST_F(ControllersTest, AGamepadsButtonsAreKnownByTheirPlaceOnEveryMake) {
  struct Make {
    const char* name;
    int product;
    const char* mapping;
    int south, east, west, start;
  };
  const Make makes[] = {
      {"one", 0x1001, "a:b0,b:b1,x:b2,y:b3,start:b7,leftx:a0,lefty:a1", 0, 1, 2, 7},
      {"two", 0x1002, "a:b1,b:b2,x:b0,y:b3,start:b9,leftx:a0,lefty:a1", 1, 2, 0, 9},
      {"letters elsewhere", 0x1003,
       "a:b1,b:b0,x:b3,y:b2,start:b9,leftx:a0,lefty:a1,hint:!SDL_GAMECONTROLLER_USE_BUTTON_LABELS:=1", 1, 0,
       3, 9}};
  for (const Make& make : makes) {
    SCOPED_TRACE(make.name);
    VirtualController pad({.axes = {0, 0}, .buttons = 12, .vendor = 0x1234, .product = make.product});
    ASSERT_GE(SDL_GameControllerAddMapping((pad.guid() + ",Pad," + make.mapping).c_str()), 0)
        << SDL_GetError();
    const auto device = acquired(pad);
    const auto expectOnly = [&](int button, std::size_t number) {
      pad.button(button, true);
      yield();
      const JoystickState state = device->GetDeviceStateJoystick();
      for (std::size_t i = 0; i < state.buttons.size(); ++i) {
        EXPECT_EQ(state.buttons[i] != 0, i == number) << i;
      }
      pad.button(button, false);
    };
    expectOnly(make.south, 0);  // select
    expectOnly(make.east, 6);   // horn
    expectOnly(make.west, 1);
    expectOnly(make.start, 2);
  }
}

struct WheelModel {
  const char* name;
  int vendor, product;
  int axes, gas, brake;
};

/// Every pedal of every wheel, down and up again, and the others with it: only gas and brake drive.
TEST_F(ControllersTest, EachMakersWheelHasGasAndBrakeWhereTheyAre) {
  const WheelModel models[] = {
      {"G25", 0x046d, 0xc299, 4, 2, 3},
      {"G27", 0x046d, 0xc29b, 4, 2, 3},
      {"G29", 0x046d, 0xc24f, 4, 2, 3},
      {"G920", 0x046d, 0xc262, 4, 1, 2},
      {"G923 for PlayStation", 0x046d, 0xc266, 4, 2, 3},
      {"G923 for Xbox", 0x046d, 0xc26e, 4, 1, 2},
      {"Driving Force", 0x046d, 0xc294, 3, 1, 2},
      {"Driving Force Pro", 0x046d, 0xc298, 3, 1, 2},
      {"Driving Force GT", 0x046d, 0xc29a, 3, 1, 2},
      {"Momo Force", 0x046d, 0xc295, 3, 1, 2},
      {"Momo Racing", 0x046d, 0xca03, 3, 1, 2},
      {"Speed Force Wireless", 0x046d, 0xc29c, 3, 1, 2},
      {"WingMan Formula GP", 0x046d, 0xc20e, 3, 1, 2},
      {"WingMan Formula Force", 0x046d, 0xc291, 3, 1, 2},
      {"WingMan Formula Force GP", 0x046d, 0xc293, 3, 1, 2},
      {"T150", 0x044f, 0xb677, 4, 2, 1},
      {"TMX", 0x044f, 0xb67f, 4, 2, 1},
      {"T248", 0x044f, 0xb696, 4, 2, 1},
      {"T300 RS", 0x044f, 0xb66e, 4, 2, 1},
      {"T300 RS, formula rim", 0x044f, 0xb66f, 4, 2, 1},
      {"T300 RS, other mode", 0x044f, 0xb66d, 4, 1, 2},
      {"T500 RS", 0x044f, 0xb65e, 4, 2, 1},
      {"TS-PC", 0x044f, 0xb689, 4, 2, 1},
      {"any other of that maker", 0x044f, 0x0001, 4, 2, 1},
      {"any other with a clutch", 0x1234, 0x0001, 4, 2, 3},
      {"any other without", 0x1234, 0x0002, 3, 1, 2},
  };
  for (const WheelModel& model : models) {
    SCOPED_TRACE(model.name);
    std::vector<int> atRest(static_cast<std::size_t>(model.axes), kHigh);
    atRest[0] = 0;
    VirtualController wheel({.type = SDL_JOYSTICK_TYPE_WHEEL,
                             .axes = atRest,
                             .buttons = 25,
                             .vendor = model.vendor,
                             .product = model.product});
    const auto device = acquired(wheel);
    const auto y = [&] {
      yield();
      return device->GetDeviceStateJoystick().y;
    };
    EXPECT_EQ(y(), 0) << "at rest";
    for (int axis = 1; axis < model.axes; ++axis) {
      wheel.axis(axis, kLow);
      EXPECT_EQ(y(), axis == model.gas ? -10000 : axis == model.brake ? 10000 : 0) << "axis " << axis;
      wheel.axis(axis, kHigh);
      EXPECT_EQ(y(), 0);
    }
    wheel.axis(model.gas, 0);
    EXPECT_NEAR(y(), -5000, 1);
    wheel.axis(0, -16384);
    yield();
    EXPECT_NEAR(device->GetDeviceStateJoystick().x, -5000, 1);
  }
}

/// Until its first report every axis seems to stand at the low end, where pedals are all the way down.
TEST_F(ControllersTest, AWheelThatHasNotReportedYetNeitherBrakesNorSteers) {
  VirtualController wheel(
      {.axes = {kLow, kLow, kLow, kLow}, .buttons = 25, .vendor = 0x046d, .product = 0xc24f});
  const auto device = acquired(wheel);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, 0);
  EXPECT_EQ(device->GetDeviceStateJoystick().x, 0);
  EXPECT_EQ(receiver.times, 0);
  wheel.axis(0, 1000);
  for (const int pedal : {1, 2, 3}) {
    wheel.axis(pedal, kHigh);
  }
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, 0);
  EXPECT_NEAR(device->GetDeviceStateJoystick().x, 305, 1);
}

TEST_F(ControllersTest, APedalMayRestAtTheLowEndOfItsAxis) {
  VirtualController wheel({.type = SDL_JOYSTICK_TYPE_WHEEL, .axes = {0, kLow, kHigh}});
  const auto device = acquired(wheel);
  const auto y = [&] {
    yield();
    return device->GetDeviceStateJoystick().y;
  };
  EXPECT_EQ(y(), 0) << "pedals at rest";
  wheel.axis(1, -26214);
  EXPECT_NEAR(y(), -1000, 1);
  wheel.axis(1, kHigh);
  EXPECT_EQ(y(), -10000);
  wheel.axis(1, kLow);
  wheel.axis(2, kLow);
  EXPECT_EQ(y(), 10000);
}

TEST_F(ControllersTest, PedalsWithAPlugOfTheirOwnJoinTheFirstWheel) {
  const VirtualModel pedalsModel{.axes = {kLow, kLow, kLow}, .buttons = 0, .name = "Sim Pedals"};
  auto pedals = std::make_unique<VirtualController>(pedalsModel);
  VirtualController wheel({.axes = {0, kHigh, kHigh, kHigh}, .vendor = 0x046d, .product = 0xc24f});
  EXPECT_EQ(controllers.attached(), (std::vector<std::string>{wheel.identifier()}))
      << "they drive nothing alone";
  const auto device = acquired(wheel);
  const auto y = [&] {
    yield();
    return device->GetDeviceStateJoystick().y;
  };
  EXPECT_EQ(y(), 0);
  pedals->axis(0, kHigh);
  EXPECT_EQ(y(), -10000);
  pedals->axis(0, kLow);
  pedals->axis(1, 0);
  EXPECT_NEAR(y(), 5000, 1);
  pedals->axis(1, kLow);
  pedals->axis(2, kHigh);
  EXPECT_EQ(y(), 0) << "the clutch";
  wheel.axis(2, kLow);
  EXPECT_EQ(y(), -10000) << "the wheel's own pedals count as well";
  wheel.axis(2, kHigh);

  controllers.takeNews();
  pedals->axis(0, kHigh);
  EXPECT_EQ(y(), -10000);
  pedals.reset();
  EXPECT_EQ(y(), 0) << "unplugged on full gas";
  EXPECT_THAT(controllers.takeNews(), testing::ElementsAre(" The pedals are disconnected. "));
  VirtualController again(pedalsModel);
  EXPECT_EQ(y(), 0);
  EXPECT_THAT(controllers.takeNews(), testing::ElementsAre(" The pedals are connected. "));
  again.axis(0, kHigh);
  EXPECT_EQ(y(), -10000);
}

TEST_F(ControllersTest, PedalsOfAWheelThatIsUnpluggedDriveNothing) {
  VirtualController pedals({.axes = {kLow, kLow, kLow}, .buttons = 0, .name = "Sim Pedals"});
  VirtualController wheel({.axes = {0, kHigh, kHigh, kHigh}, .vendor = 0x046d, .product = 0xc24f});
  const auto device = acquired(wheel);
  yield();
  pedals.axis(0, kHigh);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, -10000);
  wheel.unplug();
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, 0);
}

TEST_F(ControllersTest, PedalsDoNotJoinAGamepad) {
  VirtualController pad(gamepad());
  const auto device = acquired(pad);
  VirtualController pedals({.axes = {kLow, kLow, kLow}, .buttons = 0, .name = "Sim Pedals"});
  yield();
  pedals.axis(0, kHigh);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, 0);
  EXPECT_TRUE(controllers.takeNews().empty());
}

TEST_F(ControllersTest, AThrottleIsNoController) {
  VirtualController throttle({.type = SDL_JOYSTICK_TYPE_THROTTLE, .axes = {kLow, kLow, 0, 0, 0}});
  VirtualController stick(flightStick());
  EXPECT_EQ(controllers.attached(), (std::vector<std::string>{stick.identifier()}));
}

TEST_F(ControllersTest, ASliderIsNeverASecondStick) {
  VirtualController stick({.axes = {0, 0, kLow, kHigh}});
  const auto device = acquired(stick);
  for (const int value : {kLow, -10000, 0, kHigh}) {
    stick.axis(2, value);
    stick.axis(3, value);
    yield();
    EXPECT_EQ(device->GetDeviceStateJoystick().rx, 0);
    EXPECT_EQ(device->GetDeviceStateJoystick().ry, 0);
  }
  EXPECT_EQ(receiver.times, 0);
}

TEST_F(ControllersTest, AWheelWithOnePedalAxisIsReadAsItIs) {
  VirtualController wheel({.type = SDL_JOYSTICK_TYPE_WHEEL, .axes = {0, 0}});
  const auto device = acquired(wheel);
  wheel.axis(1, -32768);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, -10000);
}

TEST_F(ControllersTest, DeadZoneAndSaturationHoldForTheirAxisAlone) {
  VirtualController stick(flightStick());
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
  VirtualController wheel({.axes = {0, 0}, .buttons = 40});
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
  VirtualController stick(flightStick());
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
  VirtualController stick(flightStick());
  stick.axis(0, -24576);
  stick.button(1, true);
  SDL_PumpEvents();
  const auto device = acquired(stick);
  yield();
  EXPECT_EQ(receiver.times, 0);
  EXPECT_NEAR(device->GetDeviceStateJoystick().x, -7500, 1);
}

TEST_F(ControllersTest, AnAxisThatStandsAtAnEndWhenTheGameStartsIsNeutralUntilItMoves) {
  VirtualController stick({.axes = {0, kLow}});
  const auto device = acquired(stick);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, 0) << "or a menu would scroll by itself";
  EXPECT_EQ(receiver.times, 0);
  stick.axis(1, -16384);
  yield();
  EXPECT_NEAR(device->GetDeviceStateJoystick().y, -5000, 1);
  stick.axis(1, kLow);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, -10000);
}

TEST_F(ControllersTest, WhatTheDeadZoneSwallowsIsNoChange) {
  VirtualController stick(flightStick());
  const auto device = acquired(stick);
  device->SetAxisProperty(AxisProperty::kDeadZone, kObjectX, 800);
  stick.axis(0, 500);
  yield();
  EXPECT_EQ(receiver.times, 0);
}

TEST_F(ControllersTest, UnacquiredItTellsNothingAndCannotBeRead) {
  VirtualController stick(flightStick());
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
  VirtualController stick(flightStick());
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
  auto stick = std::make_unique<VirtualController>(flightStick());
  const auto device = acquired(*stick);
  device->SetAxisProperty(AxisProperty::kDeadZone, kObjectX, 800);
  yield();
  controllers.takeNews();
  stick->axis(1, kLow);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, -10000);
  stick.reset();
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().y, 0) << "unplugged on full gas";
  EXPECT_THAT(controllers.takeNews(), testing::ElementsAre(" The controller is disconnected. "));
  VirtualController other({.type = SDL_JOYSTICK_TYPE_WHEEL, .axes = {0, 0}, .name = "Another model"});
  yield();
  EXPECT_THAT(controllers.takeNews(),
              testing::ElementsAre(" A controller is connected. The game takes it when it starts again. "));
  other.axis(0, 32767);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().x, 0);
  VirtualController again(flightStick());
  yield();
  EXPECT_THAT(controllers.takeNews(), testing::ElementsAre(" The controller is connected again. "));
  again.axis(0, 2000);
  again.axis(1, 32767);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().x, 0);
  EXPECT_EQ(device->GetDeviceStateJoystick().y, 10000);
  EXPECT_TRUE(controllers.takeNews().empty());
}

TEST_F(ControllersTest, APlayerWithoutOneHearsThatOneIsThere) {
  yield();
  VirtualController stick(flightStick());
  yield();
  EXPECT_THAT(controllers.takeNews(),
              testing::ElementsAre(" A controller is connected. The game takes it when it starts again. "));
}

TEST_F(ControllersTest, ASecondOneBesideTheFirstIsNoNews) {
  VirtualController stick(flightStick());
  const auto device = acquired(stick);
  yield();
  controllers.takeNews();
  VirtualController other(gamepad());
  yield();
  other.unplug();
  yield();
  EXPECT_TRUE(controllers.takeNews().empty());
}

TEST_F(ControllersTest, ASecondOneThatHasBeenThereIsNoNewsWhenTheFirstGoes) {
  VirtualController stick(flightStick());
  const auto device = acquired(stick);
  VirtualController other(gamepad());
  yield();
  controllers.takeNews();
  stick.unplug();
  yield();
  EXPECT_THAT(controllers.takeNews(), testing::ElementsAre(" The controller is disconnected. "));
}

TEST_F(ControllersTest, PluggedOutAndInBetweenTwoLooksBothAreTold) {
  auto stick = std::make_unique<VirtualController>(flightStick());
  const auto device = acquired(*stick);
  yield();
  controllers.takeNews();
  stick = nullptr;
  VirtualController again(flightStick());
  yield();
  EXPECT_THAT(controllers.takeNews(), testing::ElementsAre(" The controller is disconnected. ",
                                                           " The controller is connected again. "));
  again.axis(0, 32767);
  yield();
  EXPECT_EQ(device->GetDeviceStateJoystick().x, 10000);
}

TEST_F(ControllersTest, RumbleIsFeltByAPlayerWhoHasTheControllerInHand) {
  VirtualController pad(gamepad());
  const auto device = acquired(pad);
  controllers.rumble({.heavy = 1, .light = 0.5, .ms = 100});
  EXPECT_TRUE(pad.rumbles.empty()) << "it lies on the table";
  pad.axis(SDL_CONTROLLER_AXIS_LEFTX, 20000);
  yield();
  controllers.rumble({.heavy = 1, .light = 0.5, .ms = 100});
  ASSERT_EQ(pad.rumbles.size(), 1U);
  EXPECT_EQ(pad.rumbles[0].low, 0xffff);
  EXPECT_EQ(pad.rumbles[0].high, 0x7fff);
  pad.unplug();
  yield();
  controllers.rumble({.heavy = 1, .light = 1, .ms = 100});
}

TEST_F(ControllersTest, DestroyedItIsForgotten) {
  VirtualController stick(flightStick());
  auto device = acquired(stick);
  device.reset();
  stick.axis(0, 30000);
  yield();
  EXPECT_EQ(receiver.times, 0);
}

}  // namespace
}  // namespace vorn
