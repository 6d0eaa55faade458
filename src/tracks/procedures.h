/// The track procedures: each runs one whole race on its track. They wait.
#pragma once

#include "state/game_state.h"

namespace vorn {

void maple(GameState& g);

}  // namespace vorn
