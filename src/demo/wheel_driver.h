/// A driver with wheel and pedals who knows the track. Pure.
#pragma once

#include <limits>

#include "demo/road_book.h"

namespace vorn {

/// What the driver's hands and feet do from one tick to the next.
struct WheelControls {
  int steering = 0;  ///< -10000 (left) .. 10000
  int pedals = 0;    ///< -10000 (full gas) .. 10000 (full brake)
  bool isUpShiftHeld = false;
  bool isDownShiftHeld = false;
};

inline constexpr Skill kWheelSkill{.entryStep = 6.3,
                                   .changeStep = 6.3,
                                   .buildUp = 0,
                                   .topStep = 6.3,
                                   .drift = 45,
                                   .slowing = 3.3,
                                   .jumpSpeed = 115};

class WheelDriver {
 public:
  /// Gives no gas above `topSpeed`, mph.
  explicit WheelDriver(const Track& track, double topSpeed = std::numeric_limits<double>::infinity());

  WheelControls after(const TickReport& tick);

 private:
  int steering(const Sight& sight) const;
  int pedals(const Sight& sight) const;
  void shift(const Sight& sight);

  RoadBook road_;
  double topSpeed_;
  double speedLimit_ = 0;  ///< mph, that the road sets
  WheelControls controls_;
};

/// The axis reading that asks for `speed` in `gear`, full gas where it is out of reach.
int gasAxis(double speed, int gear);
/// The gear for a car at this speed, given the one it is in.
int gearFor(double speed, int gear);

}  // namespace vorn
