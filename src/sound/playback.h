/// Playing sounds: one-shots and the ambient loops. A failing call is a
/// `PlatformError`.
#pragma once

#include <string>

#include "state/game_state.h"

namespace vorn {

/// The volume of loops that run unheard until they are wanted.
inline constexpr int kNearlySilent = -6500;

/// Plays a sound file (base name) to its end and empties the slot. Waits.
void play(GameState& g, const std::string& baseName);
/// Like `play`, but Escape ends it at once. Returns false then.
bool playUnlessEscaped(GameState& g, const std::string& baseName);
/// Starts a sound file and leaves it playing; yields only within `clk`.
void play2(GameState& g, const std::string& baseName);
/// Like `play`, but a key or the controller's enter button ends it early.
void play3(GameState& g, const std::string& baseName);
/// Starts a sound file at `pan`, hundredths of a decibel.
void PlayPan(GameState& g, const std::string& baseName, double pan);
/// The mark between two segments, and the horn; already sounding, they go on.
void playmark(SoundState& g);
void playhorn(SoundState& g);

/// Waits, yielding, until what is in the slot has ended.
void waitWhilePlaying(Platform& platform, SoundSlot& slot);
/// Waits until the one-shot has ended, or Escape is pressed: then it is stopped and
/// its slot emptied. Returns false then.
bool hearOut(GameState& g);
/// Stops and empties the one-shot slot, if it holds anything.
void stopOneShot(SoundState& g);

/// Starts the loops of a race: walls audible, marbles and tyres silent. Waits 0.1 s.
void sars(GameState& g);
/// Empties every slot and lets the sound device go: nothing sounds from now on.
void releaseSounds(SoundState& g);
/// Stops all looping sounds, whatever fails.
void stopall(SoundState& g);
/// The same, but a failure ends the program.
void stopall2(SoundState& g);

/// The speaker test: left, then right. Waits.
void checkspeakers(GameState& g);

}  // namespace vorn
