#include "demo/wheel_driver.h"

#include <algorithm>
#include <cmath>

namespace vorn {
namespace {

constexpr double kAxisPerStep = 1500;
constexpr double kFullStep = 6.67;
constexpr double kWorthSteering =
    3.4;                             // lateral units; smaller corrections cost more speed than they are worth
constexpr double kHarshBraking = 2;  // mph above the limit at which the brake comes in
constexpr double kUpShiftAt[] = {0, 76, 126, 176, 1000};
constexpr double kDownShiftBelow = 8;  // mph below the end of the next lower gear

}  // namespace

int gasAxis(double speed, int gear) {
  const double gas = (speed - 50 * (gear - 1)) / 4;  // of 20
  return -static_cast<int>(std::lround(std::clamp(gas, 1.0, 20.0) * 485)) - (gas >= 20 ? 300 : 0);
}

int gearFor(double speed, int gear) {
  while (gear < 4 && speed > kUpShiftAt[gear]) ++gear;
  while (gear > 1 && speed < kUpShiftAt[gear - 1] - kDownShiftBelow) --gear;
  return gear;
}

WheelDriver::WheelDriver(const Track& track, double topSpeed)
    : road_(track, kWheelSkill), topSpeed_(topSpeed) {}

int WheelDriver::steering(const Sight& sight) const {
  const Sight next = road_.pushed(sight);
  const double off = road_.line(next.segment == sight.segment ? next : sight) - next.lateralPosition;
  double step = std::clamp(off, -kFullStep, kFullStep);
  if (std::fabs(step) < kWorthSteering) step = 0;
  return static_cast<int>(std::clamp(step * kAxisPerStep, -10000.0, 10000.0));
}

int WheelDriver::pedals(const Sight& sight) const {
  if (sight.speed > speedLimit_ + kHarshBraking) return 10000;
  const double wanted = std::min(speedLimit_, topSpeed_);
  if (sight.speed > wanted) return 0;
  return gasAxis(wanted, std::max(sight.gear, 1));
}

void WheelDriver::shift(const Sight& sight) {
  if (controls_.isUpShiftHeld || controls_.isDownShiftHeld) {
    controls_.isUpShiftHeld = controls_.isDownShiftHeld = false;
    return;
  }
  if (sight.gear == 0) return;
  const int wanted = gearFor(sight.speed, sight.gear);
  controls_.isUpShiftHeld = wanted > sight.gear;
  controls_.isDownShiftHeld = wanted < sight.gear;
}

WheelControls WheelDriver::after(const TickReport& tick) {
  const Sight sight = road_.sightAfter(tick);
  speedLimit_ = road_.speedLimit(sight);
  controls_.steering = steering(sight);
  controls_.pedals = pedals(sight);
  shift(sight);
  return controls_;
}

}  // namespace vorn
