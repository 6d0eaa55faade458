/// From the main menu to the race, its results and back.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Runs menus and races until the player leaves the game. Waits.
void runMainFlow(GameState& g);

}  // namespace vorn
