/// How the travel of an axis becomes the number that the game reads. Pure.
#pragma once

#include <algorithm>
#include <cmath>

namespace vorn {

/// Settings of one axis.
struct AxisLaw {
  int low = -10000, high = 10000;  ///< the range, `low` below `high`
  int deadZone = 0;                ///< hundredths of a percent of the travel that read as the middle
  int saturation = 10000;          ///< hundredths of a percent of the travel behind which it reads as the end
};

/// The reading for a `travel` of -1 .. 1: straight from the edge of the dead zone
/// (the middle of the range) to the saturation (its end).
inline int axisReading(double travel, const AxisLaw& law) {
  const double dead = law.deadZone / 10000.0;
  const double full = std::max(law.saturation / 10000.0, dead + 1e-9);
  const double size = std::clamp((std::abs(travel) - dead) / (full - dead), 0.0, 1.0);
  const double middle = (law.low + law.high) / 2.0, half = (law.high - law.low) / 2.0;
  return static_cast<int>(std::lround(middle + std::copysign(size, travel) * half));
}

}  // namespace vorn
