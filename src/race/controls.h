/// What the driver's hands and feet ask for, by the device that `inputDevice` names.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Whether the button (controller) or the key (keyboard) is down.
bool isAsked(const InputState& in, int button, int keyCode);
bool isUpShiftAsked(const InputState& in);
bool isHornAsked(const InputState& in);
/// Whether gas is given: the axis reads less than `beyond` (0 at rest, -10000 full gas), or the key is down.
bool isGasAsked(const InputState& in, int beyond);
/// Revolutions that the gas pedal asks for of an engine in neutral, 0..100. A
/// controller's brake revs it as well.
double revsAsked(const InputState& in);

/// Whether the driver gives up the race; leaves `escapePressed` = 1 if so.
bool isEscapeAsked(InputState& in);
/// Waits for the start-engine control. Returns false where the driver gave up.
bool waitForStartEngine(GameState& g);

}  // namespace vorn
