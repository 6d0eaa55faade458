/// The frame of one race: the start with its countdown, and the finish.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Runs the start of a race, again after every jumped start. Returns with the
/// car in first gear and the clock running, or with `escapePressed` = 1. Waits.
void startrace(GameState& g);

/// The finish: horn, free revving, silence. Waits about two seconds.
void EndTheRace(GameState& g);

}  // namespace vorn
