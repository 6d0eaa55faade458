/// Pit road: entry, lane, box, service and rejoining. May call the race, playback and input.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// The last `lapPosition` from which the pit entry can still be taken.
inline constexpr double kLastPitEntry = 2500;

/// The whole stop, pits on side 1 (left) or 2 (right). Refuses, with
/// `pitEntryMissed` = 1, a car that has passed the entry. Returns early with
/// `escapePressed` = 1 where the driver gives up. Waits.
void pitroad(GameState& g, int side);

}  // namespace vorn
