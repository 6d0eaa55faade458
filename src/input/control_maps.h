/// The two control maps: defaults, files, resets, and the default lists read aloud.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Both maps back to their defaults, in memory only.
void jhk(GameState& g);

/// Loads a map from its file where there is one. A file that is short, or holds
/// something that is no button or key, is replaced by the defaults, and what is to
/// be said about it is left in `startUpMessages`. Does not wait.
void getJoyCFG(GameState& g);
void getKeyCFG(GameState& g);

/// Writes a map's file whole.
void printJoyCFG(GameState& g);
void printKeyCFG(GameState& g);

/// A map back to its defaults, in memory and file, and says so (waits).
void ReSetJoy(GameState& g);
void resetkey(GameState& g);

/// Queues the list of the default controls.
void readjoy(GameState& g);
void readKB(GameState& g);

}  // namespace vorn
