/// The controls of a car that stands: start engine, gas, shift, horn, giving up.
/// May call input and playback.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Whether the button (controller) or the key (keyboard) is down, as `inputDevice` decides.
bool isAsked(const GameState& g, int button, int keyCode);

/// Whether the driver gives up the race; leaves `escapePressed` = 1 if so.
bool isEscapeAsked(GameState& g);
bool isUpShiftAsked(const GameState& g);
bool isHornAsked(const GameState& g);
/// Waits for the start-engine control. Returns false where the driver gave up.
bool waitForStartEngine(GameState& g);

}  // namespace vorn
