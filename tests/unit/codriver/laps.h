/// Laps driven on paper.
#pragma once

#include <vector>

#include "codriver/lap_times.h"
#include "tracks/catalogue.h"

namespace vorn {

/// A car that goes round at one speed.
class SteadyCar {
 public:
  SteadyCar(const Track& track, double speed, double lateral = 50) : track_(track) {
    tick_.speed = speed;
    tick_.lateralPosition = lateral;
    tick_.segment = 1;
  }

  /// Its state at the end of the next tick.
  const TickReport& next() {
    const double length = track_.segments[static_cast<std::size_t>(tick_.segment - 1)].length;
    if (tick_.lapPosition >= length) {
      tick_.lapPosition -= length;
      if (++tick_.segment > static_cast<int>(track_.segments.size())) {
        tick_.segment = 1;
        ++tick_.lapsCompleted;
      }
    }
    tick_.lapPosition += tick_.speed;
    ++tick_.raceTicks;
    return tick_;
  }
  TickReport& now() { return tick_; }

 private:
  const Track& track_;
  TickReport tick_{};
};

/// The lap that `car` ends next.
inline GhostLap nextLap(LapWatch& watch, SteadyCar& car, bool isByKeys = false) {
  for (;;) {
    if (auto lap = watch.watch(car.next(), isByKeys).lap) return *lap;
  }
}

}  // namespace vorn
