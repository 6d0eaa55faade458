#include "platform/common/controller_reader.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using Axes = std::vector<double>;

ControllerReader readerOf(const ControllerFacts& facts) {
  return ControllerReader(layoutOf(facts));
}

ControllerReader g29() {
  return readerOf({.vendor = 0x046d, .product = 0xc24f, .axes = 4, .buttons = 25});
}

ControllerReader pad() {
  return readerOf({.kind = ControllerKind::kGamepad, .axes = kPadAxes, .buttons = kPadButtons});
}

ControllerReader stick(int axes, ControllerKind kind = ControllerKind::kUnknown) {
  return readerOf({.kind = kind, .axes = axes, .buttons = 12});
}

ControllerReading reading(ControllerReader& reader, const Axes& axes) {
  return reader.read({.axes = axes});
}

// Steering, clutch, gas, brake.
const Axes kG29AtRest{0, 1, 1, 1};

TEST(ControllerReader, APedalIsPressedAwayFromItsRest) {
  ControllerReader wheel = g29();
  EXPECT_EQ(reading(wheel, kG29AtRest).gasAndBrake(), 0);
  EXPECT_EQ(reading(wheel, {0, 1, 0, 1}).gas, 0.5);
  EXPECT_EQ(reading(wheel, {0, 1, -1, 1}).gasAndBrake(), -1);
  EXPECT_EQ(reading(wheel, {0, 1, 1, -1}).gasAndBrake(), 1);
  EXPECT_EQ(reading(wheel, {-0.5, 1, 1, 1}).steering, -0.5);
}

TEST(ControllerReader, TheClutchDrivesNothing) {
  ControllerReader wheel = g29();
  reading(wheel, kG29AtRest);
  EXPECT_EQ(reading(wheel, {0, -1, 1, 1}).gasAndBrake(), 0);
}

TEST(ControllerReader, AWheelThatHasNotReportedYetPressesNothing) {
  ControllerReader wheel = g29();
  EXPECT_EQ(reading(wheel, {-1, -1, -1, -1}).gasAndBrake(), 0);
  EXPECT_EQ(reading(wheel, {-1, -1, -1, -1}).steering, 0);
  EXPECT_EQ(reading(wheel, {0.2, 1, 1, 1}).gasAndBrake(), 0) << "its first report tells where it stands";
  EXPECT_EQ(reading(wheel, {0.2, 1, 1, 1}).steering, 0.2);
  EXPECT_EQ(reading(wheel, {0, 1, -1, 1}).gas, 1);
}

TEST(ControllerReader, AnAxisThatTheSystemKnowsNothingOfYetPressesNothing) {
  ControllerReader wheel = g29();
  EXPECT_EQ(reading(wheel, {0, 0, 0, 0}).gas, 0);
  EXPECT_EQ(reading(wheel, kG29AtRest).gas, 0);
  EXPECT_EQ(reading(wheel, {0, 1, -1, 1}).gas, 1);
}

TEST(ControllerReader, APedalThatLeavesTheOtherEndByDegreesRestsThere) {
  ControllerReader wheel = g29();
  EXPECT_EQ(reading(wheel, {0, -1, -1, -1}).gas, 0);
  EXPECT_NEAR(reading(wheel, {0, -1, -0.8, -1}).gas, 0.1, 1e-9);
  EXPECT_EQ(reading(wheel, {0, -1, 1, -1}).gas, 1);
  EXPECT_EQ(reading(wheel, {0, -1, -1, -1}).gas, 0);
}

TEST(ControllerReader, AQuickFootPressesAPedalFromItsUsualRestAllTheSame) {
  ControllerReader wheel = g29();
  reading(wheel, kG29AtRest);
  EXPECT_EQ(reading(wheel, {0, 1, -1, 1}).gas, 1);
  EXPECT_EQ(reading(wheel, kG29AtRest).gas, 0);
}

TEST(ControllerReader, TriggersAreGasAndBrakeBesideTheStick) {
  ControllerReader gamepad = pad();
  EXPECT_EQ(reading(gamepad, {0, 0, 0, 0, -1, -1}).gasAndBrake(), 0);
  EXPECT_EQ(reading(gamepad, {0, 0, 0, 0, -1, 1}).gasAndBrake(), -1);
  EXPECT_EQ(reading(gamepad, {0, 0, 0, 0, 1, -1}).gasAndBrake(), 1);
  EXPECT_EQ(reading(gamepad, {0, -0.5, 0, 0, -1, -1}).gasAndBrake(), -0.5);
  EXPECT_EQ(reading(gamepad, {0, 0.3, 0, 0, -1, 1}).gasAndBrake(), -1) << "whichever is moved further";
  const ControllerReading sticks = reading(gamepad, {0.25, 0, -1, 1, -1, -1});
  EXPECT_EQ(sticks.steering, 0.25);
  EXPECT_EQ(sticks.secondX, -1);
  EXPECT_EQ(sticks.secondY, 1);
}

TEST(ControllerReader, TheDirectionalPadIsTheStickPushedAllTheWay) {
  ControllerReader gamepad = pad();
  const Axes atRest{0, 0, 0, 0, -1, -1};
  EXPECT_EQ(gamepad.read({.axes = atRest, .isUp = true}).gasAndBrake(), -1);
  EXPECT_EQ(gamepad.read({.axes = atRest, .isDown = true}).gasAndBrake(), 1);
  EXPECT_EQ(gamepad.read({.axes = atRest, .isUp = true, .isDown = true}).gasAndBrake(), 0);
  EXPECT_EQ(gamepad.read({.axes = atRest}).gasAndBrake(), 0);
}

TEST(ControllerReader, AnAxisThatStandsAtAnEndAtFirstIsNeutralUntilItMoves) {
  for (const double end : {-1.0, 1.0}) {
    ControllerReader joystick = stick(2);
    EXPECT_EQ(reading(joystick, {end, end}).steering, 0);
    EXPECT_EQ(reading(joystick, {end, end * 0.95}).gasAndBrake(), 0);
    EXPECT_EQ(reading(joystick, {end * 0.5, end}).steering, end * 0.5);
    EXPECT_EQ(reading(joystick, {end, end}).steering, end) << "moved there";
    EXPECT_EQ(reading(joystick, {end, end}).gasAndBrake(), 0) << "still unmoved";
  }
}

TEST(ControllerReader, AnAxisThatIsHeldShortOfItsEndAtFirstCounts) {
  ControllerReader joystick = stick(2);
  EXPECT_EQ(reading(joystick, {0, -0.7}).gasAndBrake(), -0.7);
}

TEST(ControllerReader, ASecondStickIsOneOnlyWhereItStoodInItsMiddle) {
  ControllerReader twoSticks = stick(4);
  reading(twoSticks, {0, 0, 0.1, -0.1});
  EXPECT_EQ(reading(twoSticks, {0, 0, 1, -1}).secondX, 1);
  EXPECT_EQ(reading(twoSticks, {0, 0, 1, -1}).secondY, -1);

  ControllerReader withThrottle = stick(4);
  reading(withThrottle, {0, 0, -0.5, -1});
  for (const double travel : {-1.0, -0.5, 0.0, 1.0}) {
    EXPECT_EQ(reading(withThrottle, {0, 0, travel, travel}).secondX, 0) << travel;
    EXPECT_EQ(reading(withThrottle, {0, 0, travel, travel}).secondY, 0) << travel;
  }
}

TEST(ControllerReader, AFlightSticksTwistAndThrottleDriveNothing) {
  ControllerReader flight = stick(4, ControllerKind::kFlightStick);
  reading(flight, {0, 0, 0, 0});
  const ControllerReading moved = reading(flight, {0, 0, -1, -1});
  EXPECT_EQ(moved.steering, 0);
  EXPECT_EQ(moved.gasAndBrake(), 0);
  EXPECT_EQ(moved.secondX, 0);
  EXPECT_EQ(moved.secondY, 0);
}

TEST(ControllerReader, PedalsAloneRestAtTheLowEnd) {
  ControllerReader pedals = readerOf({.name = "Sim Pedals", .axes = 3});
  EXPECT_EQ(reading(pedals, {-1, -1, -1}).gasAndBrake(), 0);
  EXPECT_EQ(reading(pedals, {1, -1, -1}).gas, 1);
  EXPECT_EQ(reading(pedals, {-1, 0, 1}).brake, 0.5);
}

TEST(ControllerReader, ButtonsHaveTheNumbersOfTheLayout) {
  ControllerReader wheel = g29();
  std::vector<bool> buttons(25, false);
  buttons[7] = true;
  EXPECT_NE(wheel.read({.buttons = buttons}).buttons[7], 0);
  ControllerReader gamepad = pad();
  buttons.assign(kPadButtons, false);
  buttons[static_cast<std::size_t>(PadButton::kEast)] = true;
  buttons[static_cast<std::size_t>(PadButton::kUp)] = true;
  const ControllerReading reading = gamepad.read({.buttons = buttons});
  for (std::size_t number = 0; number < reading.buttons.size(); ++number) {
    EXPECT_EQ(reading.buttons[number] != 0, number == 6) << number;
  }
}

TEST(ControllerReader, ControlsThatAreNotThereAreNeutral) {
  ControllerReader wheel = g29();
  const ControllerReading reading = wheel.read({});
  EXPECT_EQ(reading.steering, 0);
  EXPECT_EQ(reading.gasAndBrake(), 0);
}

}  // namespace
}  // namespace vorn
