/// Race time: ticks run, not wall-clock time. Pure.
#pragma once

#include "state/race_state.h"

namespace vorn {

/// 9.8 race ticks make a second of race time.
inline constexpr double kTicksPerSecond = 9.8;

/// `raceTicks` in seconds, cut off after the millisecond.
double secondsOfTicks(double raceTicks);

/// Computes `raceTime` and its parts, given where in the last segment the finish
/// line lies: the share of the last tick beyond it is taken off `raceTicks`.
void settimes(RaceState& race, double finishPosition);

}  // namespace vorn
