/// The car tick: everything that happens to the car in a tenth of a second, in a
/// fixed order.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// One race tick; waits for its end. Returns early, the tick not counted, where
/// the driver gives up inside a crash (`escapePressed` = 1).
void checkstuff(GameState& g);

/// The shift controls, one shift a press; reads the device and yields once, for
/// at most `atMostMs` milliseconds.
void readShifts(GameState& g, int atMostMs = 0);

}  // namespace vorn
