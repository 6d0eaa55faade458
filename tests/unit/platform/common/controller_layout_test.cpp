#include "platform/common/controller_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace vorn {
namespace {

using enum AxisUse;

ControllerFacts device(int vendor, int product, int axes) {
  return {.name = "Some name", .vendor = vendor, .product = product, .axes = axes, .buttons = 12};
}

ControllerFacts ofKind(ControllerKind kind, int axes, const char* name = "Some name") {
  return {.name = name, .kind = kind, .axes = axes, .buttons = 12};
}

struct Model {
  const char* name;
  int vendor, product;
  std::vector<AxisUse> axes;
};

const std::vector<AxisUse> kClutchFirst{kSteering, kClutch, kGas, kBrake};
const std::vector<AxisUse> kClutchLast{kSteering, kGas, kBrake, kClutch};
const std::vector<AxisUse> kTwoPedals{kSteering, kGas, kBrake};
const std::vector<AxisUse> kBrakeFirst{kSteering, kBrake, kGas, kClutch};

const Model kModels[] = {
    {"G25", 0x046d, 0xc299, kClutchFirst},
    {"G27", 0x046d, 0xc29b, kClutchFirst},
    {"G29", 0x046d, 0xc24f, kClutchFirst},
    {"G920", 0x046d, 0xc262, kClutchLast},
    {"G923 for PlayStation", 0x046d, 0xc266, kClutchFirst},
    {"G923 for Xbox", 0x046d, 0xc26e, kClutchLast},
    {"Driving Force", 0x046d, 0xc294, kTwoPedals},
    {"Driving Force Pro", 0x046d, 0xc298, kTwoPedals},
    {"Driving Force GT", 0x046d, 0xc29a, kTwoPedals},
    {"Momo Force", 0x046d, 0xc295, kTwoPedals},
    {"Momo Racing", 0x046d, 0xca03, kTwoPedals},
    {"Speed Force Wireless", 0x046d, 0xc29c, kTwoPedals},
    {"WingMan Formula GP", 0x046d, 0xc20e, kTwoPedals},
    {"WingMan Formula Force", 0x046d, 0xc291, kTwoPedals},
    {"WingMan Formula Force GP", 0x046d, 0xc293, kTwoPedals},
    {"T150", 0x044f, 0xb677, kBrakeFirst},
    {"TMX", 0x044f, 0xb67f, kBrakeFirst},
    {"T248", 0x044f, 0xb696, kBrakeFirst},
    {"T300 RS", 0x044f, 0xb66e, kBrakeFirst},
    {"T300 RS, formula rim", 0x044f, 0xb66f, kBrakeFirst},
    {"T300 RS, other mode", 0x044f, 0xb66d, kClutchLast},
    {"T500 RS", 0x044f, 0xb65e, kBrakeFirst},
    {"TS-PC", 0x044f, 0xb689, kBrakeFirst},
};

TEST(ControllerLayout, KnowsTheWheelsOfTheTable) {
  for (const Model& model : kModels) {
    SCOPED_TRACE(model.name);
    const ControllerLayout layout =
        layoutOf(device(model.vendor, model.product, static_cast<int>(model.axes.size())));
    EXPECT_EQ(layout.kind, LayoutKind::kWheel);
    EXPECT_TRUE(layout.isFromTable);
    EXPECT_EQ(layout.axes, model.axes);
    EXPECT_EQ(layout.pedalRest, 1);
    EXPECT_EQ(buttonCount(layout), 12);
  }
}

TEST(ControllerLayout, AKnownWheelIsOneWhateverTheSystemTakesItFor) {
  ControllerFacts facts = device(0x044f, 0xb677, 4);
  for (const ControllerKind kind :
       {ControllerKind::kGamepad, ControllerKind::kWheel, ControllerKind::kFlightStick}) {
    facts.kind = kind;
    EXPECT_EQ(layoutOf(facts).kind, LayoutKind::kWheel);
  }
}

TEST(ControllerLayout, AxesBeyondThoseOfTheModelMeanNothing) {
  const ControllerLayout layout = layoutOf(device(0x046d, 0xc299, 6));
  EXPECT_EQ(layout.axes, (std::vector<AxisUse>{kSteering, kClutch, kGas, kBrake, kNothing, kNothing}));
}

TEST(ControllerLayout, AKnownWheelWithOneAxisForBothPedalsIsReadAsAStick) {
  const ControllerLayout layout = layoutOf(device(0x046d, 0xc294, 2));
  EXPECT_EQ(layout.kind, LayoutKind::kStick);
  EXPECT_EQ(layout.axes, (std::vector<AxisUse>{kSteering, kGasAndBrake}));
}

TEST(ControllerLayout, OtherWheelsGoByTheirShape) {
  EXPECT_EQ(layoutOf(ofKind(ControllerKind::kWheel, 4)).axes, kClutchFirst);
  EXPECT_EQ(layoutOf(ofKind(ControllerKind::kWheel, 3)).axes, kTwoPedals);
  EXPECT_EQ(layoutOf({.vendor = 0x044f, .product = 0x0001, .kind = ControllerKind::kWheel, .axes = 4}).axes,
            kBrakeFirst);
  EXPECT_EQ(layoutOf(ofKind(ControllerKind::kUnknown, 3, "Maker's Racing Wheel")).axes, kTwoPedals);
  EXPECT_FALSE(layoutOf(ofKind(ControllerKind::kWheel, 4)).isFromTable);
  EXPECT_EQ(layoutOf(ofKind(ControllerKind::kWheel, 2)).axes,
            (std::vector<AxisUse>{kSteering, kGasAndBrake}));
}

TEST(ControllerLayout, PedalsAreKnownByTheirNumbersOrTheirName) {
  const std::vector<AxisUse> pedals{kGas, kBrake, kClutch};
  for (const auto& facts : {device(0x044f, 0xb371, 3), device(0x044f, 0xb678, 3), device(0x0eb7, 0x183b, 3),
                            device(0x0eb7, 0x6204, 3), device(0x0eb7, 0x6205, 3), device(0x0eb7, 0x6206, 3),
                            ofKind(ControllerKind::kUnknown, 3, "Maker's Sim PEDALS")}) {
    const ControllerLayout layout = layoutOf(facts);
    EXPECT_EQ(layout.kind, LayoutKind::kPedals) << std::hex << facts.product;
    EXPECT_EQ(layout.axes, pedals);
    EXPECT_EQ(layout.pedalRest, -1);
    EXPECT_EQ(buttonCount(layout), 0);
  }
}

TEST(ControllerLayout, NeitherRudderPedalsNorAWheelWithPedalsAreSuchPedals) {
  EXPECT_NE(layoutOf(ofKind(ControllerKind::kUnknown, 3, "Flight Rudder Pedals")).kind, LayoutKind::kPedals);
  EXPECT_EQ(layoutOf(ofKind(ControllerKind::kUnknown, 3, "Wheel and Pedals")).kind, LayoutKind::kWheel);
}

TEST(ControllerLayout, AThrottleSteersNothing) {
  const ControllerLayout layout = layoutOf(ofKind(ControllerKind::kThrottle, 5));
  EXPECT_EQ(layout.kind, LayoutKind::kNothing);
  EXPECT_TRUE(layout.axes.empty());
}

TEST(ControllerLayout, ASticksTwistAndThrottleAreNoSecondStick) {
  EXPECT_EQ(layoutOf(ofKind(ControllerKind::kFlightStick, 4)).axes,
            (std::vector<AxisUse>{kSteering, kGasAndBrake, kNothing, kNothing}));
  EXPECT_EQ(layoutOf(ofKind(ControllerKind::kUnknown, 3)).axes,
            (std::vector<AxisUse>{kSteering, kGasAndBrake, kNothing}));
  EXPECT_EQ(layoutOf(ofKind(ControllerKind::kUnknown, 5)).axes,
            (std::vector<AxisUse>{kSteering, kGasAndBrake, kNothing, kSecondX, kSecondY}));
  EXPECT_EQ(layoutOf(ofKind(ControllerKind::kUnknown, 4)).axes,
            (std::vector<AxisUse>{kSteering, kGasAndBrake, kSecondX, kSecondY}));
  EXPECT_EQ(layoutOf(ofKind(ControllerKind::kUnknown, 1)).axes, (std::vector<AxisUse>{kSteering}));
  EXPECT_TRUE(layoutOf(ofKind(ControllerKind::kUnknown, 0)).axes.empty());
}

TEST(ControllerLayout, ButtonsBeyondTheThirtySecondAreNotKnown) {
  ControllerFacts facts = ofKind(ControllerKind::kUnknown, 2);
  facts.buttons = 40;
  EXPECT_EQ(buttonCount(layoutOf(facts)), 32);
  facts.buttons = 0;
  EXPECT_EQ(buttonCount(layoutOf(facts)), 0);
}

TEST(ControllerLayout, AGamepadsButtonsGoByTheirPlace) {
  const ControllerLayout pad = layoutOf(ofKind(ControllerKind::kGamepad, kPadAxes));
  EXPECT_EQ(pad.kind, LayoutKind::kGamepad);
  EXPECT_EQ(pad.axes, (std::vector<AxisUse>{kSteering, kGasAndBrake, kSecondX, kSecondY, kBrake, kGas}));
  EXPECT_EQ(pad.pedalRest, -1);
  const auto number = [&](PadButton button) { return pad.buttons.at(static_cast<std::size_t>(button)); };
  EXPECT_EQ(number(PadButton::kSouth), 0);          // speed, select
  EXPECT_EQ(number(PadButton::kWest), 1);           // position
  EXPECT_EQ(number(PadButton::kStart), 2);          // engine, fuel
  EXPECT_EQ(number(PadButton::kNorth), 3);          // pit road
  EXPECT_EQ(number(PadButton::kLeftStick), 4);      // gear
  EXPECT_EQ(number(PadButton::kRightStick), 5);     // lap
  EXPECT_EQ(number(PadButton::kEast), 6);           // horn
  EXPECT_EQ(number(PadButton::kBack), 7);           // time
  EXPECT_EQ(number(PadButton::kRightShoulder), 8);  // up
  EXPECT_EQ(number(PadButton::kLeftShoulder), 9);   // down
  EXPECT_EQ(number(PadButton::kUp), kNoButton) << "it moves in menus";
  EXPECT_EQ(number(PadButton::kDown), kNoButton);
}

TEST(ControllerLayout, NoTwoButtonsOfAGamepadAreTheSame) {
  const ControllerLayout pad = layoutOf(ofKind(ControllerKind::kGamepad, kPadAxes));
  std::multiset<int> numbers(pad.buttons.begin(), pad.buttons.end());
  numbers.erase(kNoButton);
  EXPECT_EQ(std::set<int>(numbers.begin(), numbers.end()).size(), numbers.size());
  EXPECT_EQ(buttonCount(pad), static_cast<int>(numbers.size()));
}

}  // namespace
}  // namespace vorn
