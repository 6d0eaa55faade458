/// The track procedures: each runs one whole race on its track, from the welcome
/// to the finish, or returns with `escapePressed` = 1. They wait.
#pragma once

#include "state/game_state.h"

namespace vorn {

void maple(GameState& g);
void painsville(GameState& g);
void chagrin(GameState& g);
void ohio(GameState& g);
void chardon(GameState& g);
void erie(GameState& g);
void mentor(GameState& g);
void kirtland(GameState& g);
void chesterland(GameState& g);
void geneva(GameState& g);

}  // namespace vorn
