/// The number of laps, typed and confirmed.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Asks for `lapsToRun`, 9999 at most; 0, and any number under which no record
/// could be filed, gives up the race (`escapePressed` = 1),
/// anything else lowers `escapePressed`. Waits.
void gltr(GameState& g);

}  // namespace vorn
