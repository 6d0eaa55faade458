/// The player's voice, its rate and volume, the volume of the sounds, and the file
/// that keeps the four. The dialogues wait for keys and yield.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Loads vorn1voc.cfg where there is one, as far as it goes. Values are taken as
/// they stand and are not yet given to the voice.
void getCFG(GameState& g);
/// Writes vorn1voc.cfg whole.
void printCFG(GameState& g);

/// Lets the player hear the installed voices one by one and choose, and saves.
/// With exactly two voices nothing is asked, only saved.
void changevoice(GameState& g);
/// Lets the player change the rate of speech, without limits, and saves.
void adjrate(GameState& g);
/// Lets the player change the volume of the voice, then of the sounds, and saves.
void adjvol(GameState& g);

}  // namespace vorn
