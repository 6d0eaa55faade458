/// A driver with wheel and pedals. Turns ticks into script statements.
#pragma once

#include <string>

#include "sessions/tracks/road_book.h"

namespace vorn {

class WheelDriver {
 public:
  explicit WheelDriver(const Track& track);

  /// What to do after this tick, one statement a line.
  std::string after(const TickReport& tick);

 private:
  std::string steer(const Sight& sight);
  std::string pedal(const Sight& sight);
  std::string shift(const Sight& sight);

  RoadBook road_;
  double wantedSpeed_ = 0;
  bool isShifting_ = false;
};

/// The axis reading that asks for `speed` in `gear`, full gas where it is out of reach.
int gasAxis(double speed, int gear);
/// The gear for a car at this speed, given the one it is in.
int gearFor(double speed, int gear);

}  // namespace vorn
