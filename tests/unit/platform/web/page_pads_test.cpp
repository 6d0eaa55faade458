#include "platform/web/page_pads.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/errors.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

PagePad standardPad() {
  PagePad pad{.id = "Pad (STANDARD GAMEPAD Vendor: 045e Product: 028e)", .isStandard = true};
  pad.controls.axes = {0, 0, 0, 0, -1, -1};
  pad.controls.buttons.assign(17, false);
  return pad;
}

class Receiver : public EventReceiver {
 public:
  void Form_KeyDown(int, int) override {}
  void DirectXEvent8_DXCallback(int eventId) override { events.push_back(eventId); }
  std::vector<int> events;
};

TEST(PagePads, BothFamiliesOfBrowsersNameVendorAndProduct) {
  const ControllerFacts one = pagePadFacts(standardPad());
  EXPECT_EQ(one.name, "Pad");
  EXPECT_EQ(one.vendor, 0x045E);
  EXPECT_EQ(one.product, 0x028E);
  EXPECT_EQ(one.kind, ControllerKind::kGamepad);
  const ControllerFacts other = pagePadFacts({.id = "046d-c24f-G29 Driving Force Racing Wheel"});
  EXPECT_EQ(other.name, "G29 Driving Force Racing Wheel");
  EXPECT_EQ(other.vendor, 0x046D);
  EXPECT_EQ(other.product, 0xC24F);
  EXPECT_EQ(pagePadFacts({.id = "Unknown Gamepad"}).vendor, 0);
}

TEST(PagePads, TheStandardMappingIsKnownByPlaces) {
  PagePad pad = standardPad();
  pad.controls.axes = {-0.5, 0.25, 0, 0, -1, 1};
  pad.controls.buttons[9] = pad.controls.buttons[12] = true;  // start, up
  pad.controls.buttons[7] = true;                             // a trigger, which is an axis
  const RawControls placed = placedControls(pad);
  EXPECT_THAT(placed.axes, ElementsAre(-0.5, 0.25, 0, 0, -1, 1));
  EXPECT_TRUE(placed.buttons[static_cast<std::size_t>(PadButton::kStart)]);
  EXPECT_TRUE(placed.isUp);
  EXPECT_FALSE(placed.isDown);
  EXPECT_FALSE(placed.buttons[static_cast<std::size_t>(PadButton::kExtra)]);
}

TEST(PagePads, SteersAndTellsOfEachChangeOnce) {
  PagePads pads;
  pads.report(2, standardPad());
  ASSERT_THAT(pads.attached(), ElementsAre("2"));
  const auto device = pads.open("2");
  device->SetEventNotification(7);
  EXPECT_THROW(device->GetDeviceStateJoystick(), InputLost);
  device->Acquire();
  Receiver receiver;
  pads.notify(&receiver);
  EXPECT_THAT(receiver.events, IsEmpty());
  PagePad moved = standardPad();
  moved.controls.axes[0] = 1;
  pads.report(2, moved);
  pads.notify(&receiver);
  pads.notify(&receiver);
  EXPECT_THAT(receiver.events, ElementsAre(7));
  EXPECT_EQ(device->GetDeviceStateJoystick().x, 10000);
}

TEST(PagePads, AnUnpluggedOneIsAtRest) {
  PagePads pads;
  PagePad pad = standardPad();
  pads.report(0, pad);
  const auto device = pads.open("0");
  device->Acquire();
  pad.controls.axes[0] = 1;
  pads.report(0, pad);
  EXPECT_EQ(device->GetDeviceStateJoystick().x, 10000);
  pads.remove(0);
  EXPECT_EQ(device->GetDeviceStateJoystick().x, 0);
  EXPECT_THAT(pads.attached(), IsEmpty());
  EXPECT_THROW(pads.open("0"), PlatformError);
}

TEST(PagePads, ComingAndGoingIsToldOnce) {
  PagePads pads;
  pads.report(0, standardPad());
  const auto device = pads.open("0");
  device->Acquire();
  pads.notify(nullptr);
  EXPECT_THAT(pads.takeNews(), IsEmpty());
  pads.remove(0);
  pads.notify(nullptr);
  pads.notify(nullptr);
  EXPECT_THAT(pads.takeNews(), ElementsAre(" The controller is disconnected. "));
  PagePad again = standardPad();
  again.controls.axes[0] = 1;
  pads.report(3, again);  // a browser gives it another number
  pads.notify(nullptr);
  pads.notify(nullptr);
  EXPECT_THAT(pads.takeNews(), ElementsAre(" The controller is connected again. "));
  EXPECT_EQ(device->GetDeviceStateJoystick().x, 10000);
}

TEST(PagePads, OneThatComesLaterIsToldOfUnlessAnotherIsInUse) {
  PagePads pads;
  pads.notify(nullptr);
  pads.report(0, standardPad());
  pads.notify(nullptr);
  pads.notify(nullptr);
  EXPECT_THAT(pads.takeNews(),
              ElementsAre(" A controller is connected. The game takes it when it starts again. "));
  const auto device = pads.open("0");
  pads.report(1, standardPad());
  pads.notify(nullptr);
  EXPECT_THAT(pads.takeNews(), IsEmpty());
}

class WheelTest : public testing::Test {
 protected:
  WheelTest() { pads.report(1, wheel); }

  /// Pedals that are down by -1 .. 1.
  void press(double gas, double brake, double clutch = -1) { pads.report(5, pedals(gas, brake, clutch)); }
  static PagePad pedals(double gas, double brake, double clutch) {
    return {.id = "Sim Pedals (Vendor: 1234 Product: 5678)", .controls = {.axes = {gas, brake, clutch}}};
  }
  int y() {
    pads.notify(nullptr);
    return device->GetDeviceStateJoystick().y;
  }
  void open(const std::string& identifier) {
    device = pads.open(identifier);
    device->Acquire();
  }

  const PagePad wheel{.id = "046d-c24f-G29 Driving Force Racing Wheel",
                      .controls = {.axes = {0, 1, 1, 1}, .buttons = std::vector<bool>(25)}};
  PagePads pads;
  std::unique_ptr<ControllerDevice> device;
};

TEST_F(WheelTest, PedalsWithAPlugOfTheirOwnJoinIt) {
  press(-1, -1);
  EXPECT_THAT(pads.attached(), ElementsAre("1")) << "they drive nothing alone";
  open("1");
  EXPECT_EQ(y(), 0);
  press(1, -1);
  EXPECT_EQ(y(), -10000);
  press(-1, 0);
  EXPECT_NEAR(y(), 5000, 1);
  press(-1, -1, 1);
  EXPECT_EQ(y(), 0) << "the clutch";
  EXPECT_THAT(pads.takeNews(), IsEmpty());

  press(1, -1);
  pads.remove(5);
  EXPECT_EQ(y(), 0) << "unplugged on full gas";
  EXPECT_THAT(pads.takeNews(), ElementsAre(" The pedals are disconnected. "));
  pads.report(0, pedals(-1, -1, -1));
  EXPECT_EQ(y(), 0);
  EXPECT_THAT(pads.takeNews(), ElementsAre(" The pedals are connected. "));
  pads.report(0, pedals(1, -1, -1));
  EXPECT_EQ(y(), -10000);
  pads.remove(1);
  EXPECT_EQ(y(), 0) << "without the wheel they drive nothing";
}

TEST_F(WheelTest, PedalsDoNotJoinAGamepad) {
  pads.report(2, standardPad());
  open("2");
  press(-1, -1);
  EXPECT_EQ(y(), 0);
  press(1, -1);
  EXPECT_EQ(y(), 0);
  EXPECT_THAT(pads.takeNews(), IsEmpty());
}

TEST(PagePads, AnotherInThePlaceOfOneIsNotTakenForIt) {
  PagePads pads;
  pads.report(0, standardPad());
  const auto device = pads.open("0");
  device->Acquire();
  PagePad other = standardPad();
  other.id = "Other";
  other.controls.axes[0] = 1;
  pads.report(0, other);
  pads.notify(nullptr);
  EXPECT_THAT(pads.takeNews(), ElementsAre(" The controller is disconnected. "));
  EXPECT_EQ(device->GetDeviceStateJoystick().x, 0);
}

TEST(PagePads, OnlyOneThatHasBeenMovedIsInHand) {
  PagePads pads;
  pads.report(4, standardPad());
  const auto device = pads.open("4");
  device->SetEventNotification(7);
  device->Acquire();
  Receiver receiver;
  pads.notify(&receiver);
  EXPECT_THAT(pads.inHand(), IsEmpty());
  PagePad moved = standardPad();
  moved.controls.axes[0] = 1;
  pads.report(4, moved);
  pads.notify(&receiver);
  EXPECT_THAT(pads.inHand(), ElementsAre(4));
}

}  // namespace
}  // namespace vorn
