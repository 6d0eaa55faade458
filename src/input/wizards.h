/// The two spoken wizards that map every control anew. They wait for the player and
/// yield.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Asks for both axes and ten buttons of the controller and saves the map.
/// Escape ends it: from the ninth control on with what there is, before that
/// with the defaults. Without a controller it says so and returns.
void confjoy(GameState& g);

/// Asks for fourteen keys and saves the map; there is no way out but answering.
/// Enter and keys already given are refused.
void confkey(GameState& g);

}  // namespace vorn
