/// A driver with a wheel who goes round by way of pit road: asks for it at the
/// green flag, keeps to the limit, stops in his box, and races on.
#pragma once

#include <string>

#include "sessions/tracks/wheel_script.h"

namespace vorn {

class PitStopDriver {
 public:
  enum class Leg { kBefore, kLane, kApproach, kWayOut, kAfter };

  /// How he does it; the defaults make a clean stop.
  struct Manners {
    double laneSpeed = 50;   ///< mph
    double boxSpeed = 50;    ///< mph
    double brakesAt = 2700;  ///< units into the approach
    double brakesOn = 0;     ///< seconds into the recording of the box voice; 0: by `brakesAt`
    double place = 12;       ///< lateral, from the lane to the box
  };

  explicit PitStopDriver(const Track& track) : PitStopDriver(track, Manners()) {}
  PitStopDriver(const Track& track, const Manners& manners) : onTrack_(track), manners_(manners) {}

  /// What to do after this tick, one statement a line.
  std::string after(const TickReport& tick);
  Leg leg() const { return leg_; }

 private:
  void lookWhere(const TickReport& tick);
  std::string driveLane(const TickReport& tick) const;
  std::string driveApproach(const TickReport& tick);
  std::string steerTo(double place, double from) const;

  WheelScript onTrack_;
  Manners manners_;
  Leg leg_ = Leg::kBefore;
  double lastPosition_ = 0;
  double heard_ = 0;  ///< seconds of the recording
};

}  // namespace vorn
