/// Pit road: entry, lane, box, service and rejoining.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// The whole stop, pits on side 1 (left) or 2 (right). Refuses, with
/// `pitEntryMissed` = 1, a car that has passed the entry; otherwise 0. Returns
/// early with `escapePressed` = 1 where the driver gives up; no sound of pit road
/// runs on then. While the car is on pit road `pit` is 1 and `segment` 0. Waits.
void pitroad(GameState& g, int side);

}  // namespace vorn
