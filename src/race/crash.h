/// The crash: from the impact to the car in first gear again.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Plays the wreck, puts the car back in the middle of the track, and waits for
/// the driver to start the engine and shift up. Returns with the car in first
/// gear and the time lost added, or with `escapePressed` = 1. Waits.
void crash(GameState& g);

}  // namespace vorn
