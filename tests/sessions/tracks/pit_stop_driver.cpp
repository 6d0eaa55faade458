#include "sessions/tracks/pit_stop_driver.h"

#include <algorithm>

#include "pit/rules.h"

namespace vorn {
namespace {

constexpr int kLeftSide = 1;
constexpr double kTickSeconds = 0.099;
constexpr double kRecordedAt = 22050;  // hertz

std::string pedal(double wanted, const TickReport& tick) {
  const int axis = tick.speed > wanted + 3 ? 10000 : gasAxis(wanted, std::max(tick.gear, 1));
  return "axis Y " + std::to_string(axis) + "\n";
}

}  // namespace

std::string PitStopDriver::steerTo(double place, double from) const {
  const double axis = std::clamp((place - from) * 1500, -10000.0, 10000.0);
  return "axis X " + std::to_string(static_cast<int>(axis)) + "\n";
}

// Each leg begins with a place of its own at 0.
void PitStopDriver::lookWhere(const TickReport& tick) {
  const bool isNewLeg = tick.lapPosition < lastPosition_;
  lastPosition_ = tick.lapPosition;
  if (leg_ == Leg::kBefore && tick.pit == 1) {
    leg_ = Leg::kLane;
  } else if (leg_ == Leg::kLane && isNewLeg) {
    leg_ = Leg::kApproach;
  } else if (leg_ == Leg::kApproach && isNewLeg) {
    leg_ = Leg::kWayOut;
  } else if (leg_ == Leg::kWayOut && tick.pit == 0) {
    leg_ = Leg::kAfter;
  }
}

std::string PitStopDriver::driveLane(const TickReport& tick) const {
  RaceState car;
  car.speed = tick.speed;
  car.lapPosition = tick.lapPosition;
  car.lateralPosition = tick.lateralPosition;
  driftInLane(car, pitSide(kLeftSide));
  return "button 3 up\n" + steerTo(manners_.place, car.lateralPosition) + pedal(manners_.laneSpeed, tick);
}

std::string PitStopDriver::driveApproach(const TickReport& tick) {
  heard_ += kTickSeconds * boxVoiceFrequency(tick.speed) / kRecordedAt;
  const bool isTime =
      manners_.brakesOn > 0 ? heard_ >= manners_.brakesOn : tick.lapPosition >= manners_.brakesAt;
  return steerTo(manners_.place, tick.lateralPosition) +
         (isTime ? "axis Y 10000\n" : pedal(manners_.boxSpeed, tick));
}

std::string PitStopDriver::after(const TickReport& tick) {
  lookWhere(tick);
  switch (leg_) {
    case Leg::kBefore:
      return "button 3 down\n";
    case Leg::kLane:
      return driveLane(tick);
    case Leg::kApproach:
      return driveApproach(tick);
    case Leg::kWayOut:
      return "axis X 0\naxis Y -10000\n";
    case Leg::kAfter:
      break;
  }
  return onTrack_.after(tick);
}

}  // namespace vorn
