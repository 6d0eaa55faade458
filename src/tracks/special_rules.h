/// The rules that single tracks have for themselves; their tables point here. All
/// but the jump are pure.
#pragma once

#include "tracks/track.h"

namespace vorn {

/// Down from the hill top fourth gear has no cap and loses nothing at full gas.
void unlimitTopGear(RaceState& car);

/// One tick of a banked left turn: the higher up, the weaker the push outward,
/// and the longer the way round. The way grows by a share of the height whatever
/// the speed, so a car that crawls along the top gets nowhere.
void driveBankedTurn(RaceState& car);

/// What becomes of a car that reaches the swimming hole.
enum class Flight {
  kMissedRamp,  ///< beside the ramp: straight into the water
  kTooSlow,     ///< falls short
  kClean,
  kTooFast,  ///< flies beyond the far bank into the water
};

/// Pure: ramp from 40 to 60 across the track, clean from 99 up to, not including, 131 mph.
Flight flightOf(double lateralPosition, double speed);

/// The jump over the swimming hole at the end of the segment `run`. A clean jump
/// costs 75 mph; any other ends in the water, with the crash and its restart, and
/// the car at the beginning of `landing`. Waits; in the air the gears can be
/// shifted. Escape cuts it short wherever it is; `escapePressed` is for the caller to look at.
void jumpSwimmingHole(GameState& g, const Segment& run, const Segment& landing);

}  // namespace vorn
