/// Runs a whole race over a track's segments.
#pragma once

#include "tracks/track.h"

namespace vorn {

/// Welcome, laps, start, laps and finish. Returns when the race is over, or with
/// `escapePressed` = 1 when it was given up. Waits.
void runRace(GameState& g, const Track& track);

/// The laps alone, of a race that has started. Returns false where the driver gave
/// up; otherwise the car has just crossed the line. Waits.
bool driveLaps(GameState& g, const Track& track);

}  // namespace vorn
