/// The program from beginning to end.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Start-up, menus, races, shutdown: returns when the program is over. A
/// failing platform call throws `PlatformError`, except where start-up and
/// shutdown carry on over it; `ProgramEnd` passes through.
void Form_Load(GameState& g);

}  // namespace vorn
