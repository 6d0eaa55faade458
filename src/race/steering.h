/// Steering and the marbles: what the wheel does to the car's place across the
/// track and to its speed.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Between the marbles; both ends belong to the groove.
inline constexpr double kGrooveLeft = 4;
inline constexpr double kGrooveRight = 96;

/// How far a steering reading moves the car in a tick, two decimals.
double lateralStep(int joySteering);
/// mph lost a tick to steering before the track's factor.
double steeringLoss(double speed, int joySteering);

/// One tick of steering, tyre sound and marbles. Waits only where it ends in a
/// crash; returns false where the driver gave up in it (`escapePressed` = 1).
bool SteerIt(GameState& g);

}  // namespace vorn
