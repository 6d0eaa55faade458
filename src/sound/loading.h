/// The check of the 108 sound files and the loading of those that stay in memory
/// for a race.
#pragma once

#include <string>

#include "state/game_state.h"

namespace vorn {

/// The wall sounds stand this much below `soundVolume`, one to each side.
inline constexpr int kWallsQuieterBy = 1000;
inline constexpr int kWallPan = 5000;

/// Sets `waveFilesBad` to 1 if a file of the catalogue is missing or altered;
/// leaves it alone if all are in order. Blocks for reading all files.
void checkwaves(GameState& g);

/// Fills the thirteen slots that live through a race; plays none. A failing call ends the program.
void setwaves(GameState& g);

/// Loads the chosen engine into `engineBuffer` without playing it. An `engineSound`
/// outside 1..6 fails.
void scars(GameState& g);

/// The base name of engine sound 1..6; empty for any other.
const char* engineFile(int engineSound);
/// The base name of wall sound 1..3; empty for any other.
const char* wallFile(int wallSound);

/// Puts the file of `baseName` into `slot` and sets nothing.
void fillSlot(GameState& g, SoundSlot& slot, const std::string& baseName);

/// Loads `baseName` into `slot` at its beginning, at its own frequency plus 1 Hz
/// and at `soundVolume`. The added hertz is on purpose, every loader does it.
void loadSlot(GameState& g, SoundSlot& slot, const std::string& baseName);

}  // namespace vorn
