/// The number of laps, typed and confirmed.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Asks for `lapsToRun`, 9999 at most; 0 gives up the race (`escapePressed` = 1),
/// anything else lowers `escapePressed`. Waits.
void gltr(GameState& g);

}  // namespace vorn
