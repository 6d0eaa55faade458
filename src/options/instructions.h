/// The spoken help of the main menu.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Queues the instructions; the next key in the menu cuts them off.
void readins(GameState& g);
/// Lets the player choose a track and reads its description until it ends or a key is pressed. Waits.
void reades(GameState& g);

}  // namespace vorn
