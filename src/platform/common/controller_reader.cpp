#include "platform/common/controller_reader.h"

#include <algorithm>
#include <cmath>

namespace vorn {
namespace {

constexpr double kAtEnd = 0.9;      // beyond it an axis stands at an end
constexpr double kInMiddle = 0.25;  // up to it a stick may have been left
constexpr double kMoved = 0.1;

}  // namespace

double ControllerReading::gasAndBrake() const {
  const double pedals = brake - gas;
  return std::abs(pedals) >= std::abs(stick) ? pedals : stick;
}

void ControllerReading::join(const ControllerReading& pedals) {
  gas = std::max(gas, pedals.gas);
  brake = std::max(brake, pedals.brake);
}

void AxisWatch::look(double travel) {
  if (!first_) first_ = travel;
  if (!firstMove_ && std::abs(travel - *first_) > kMoved) firstMove_ = travel;
}

double AxisWatch::swung(double travel) {
  look(travel);
  return std::abs(*first_) >= kAtEnd && !firstMove_ ? 0 : travel;
}

double AxisWatch::swungIfCentred(double travel) {
  look(travel);
  return std::abs(*first_) <= kInMiddle ? travel : 0;
}

double AxisWatch::pressed(double travel, double usualRest) {
  look(travel);
  const bool isAtRest = *first_ * usualRest >= kAtEnd;
  if (!isAtRest && !firstMove_) return 0;
  const bool restsOpposite = !isAtRest && *first_ * usualRest <= -kAtEnd && *firstMove_ * usualRest < 0;
  const double rest = restsOpposite ? -usualRest : usualRest;
  return std::clamp(std::abs(travel - rest) / 2, 0.0, 1.0);
}

ControllerReading ControllerReader::read(const RawControls& raw) {
  ControllerReading reading;
  for (std::size_t axis = 0; axis < std::min(raw.axes.size(), watches_.size()); ++axis) {
    readAxis(axis, raw.axes[axis], reading);
  }
  if (raw.isUp != raw.isDown) reading.stick = raw.isUp ? -1 : 1;
  for (std::size_t button = 0; button < std::min(raw.buttons.size(), layout_.buttons.size()); ++button) {
    const int number = layout_.buttons[button];
    if (number != kNoButton && raw.buttons[button]) {
      reading.buttons.at(static_cast<std::size_t>(number)) = 0x80;
    }
  }
  return reading;
}

void ControllerReader::readAxis(std::size_t axis, double travel, ControllerReading& reading) {
  AxisWatch& watch = watches_[axis];
  const bool isPad = layout_.kind == LayoutKind::kGamepad;  // whose second stick is one for sure
  const auto second = [&] { return isPad ? watch.swung(travel) : watch.swungIfCentred(travel); };
  switch (layout_.axes[axis]) {
    case AxisUse::kSteering:
      reading.steering = watch.swung(travel);
      break;
    case AxisUse::kGasAndBrake:
      reading.stick = watch.swung(travel);
      break;
    case AxisUse::kSecondX:
      reading.secondX = second();
      break;
    case AxisUse::kSecondY:
      reading.secondY = second();
      break;
    case AxisUse::kGas:
      reading.gas = watch.pressed(travel, layout_.pedalRest);
      break;
    case AxisUse::kBrake:
      reading.brake = watch.pressed(travel, layout_.pedalRest);
      break;
    case AxisUse::kClutch:
    case AxisUse::kNothing:
      break;
  }
}

}  // namespace vorn
