/// The player's options and their file. The dialogues wait for keys and yield.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Loads vorn1ops.cfg where there is one, as far as it goes. Values are taken as they stand.
void getgops(GameState& g);
/// Writes vorn1ops.cfg whole.
void printgops(GameState& g);

/// Asks for the wall sound, which is played, and four on/off options, and saves
/// them all. The fields change question by question.
void congops(GameState& g);
/// Asks for the engine sound, which is played, and saves it. `engineSound`
/// changes while the player browses.
void cheng(GameState& g);

}  // namespace vorn
