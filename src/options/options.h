/// The player's options and their file. May call input, speech, sound and files.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Loads vorn1ops.cfg where there is one, as far as it goes. Values are taken as they stand.
void getgops(GameState& g);

}  // namespace vorn
