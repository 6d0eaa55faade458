#include "race/start_controls.h"

#include "input/events.h"
#include "input/key_names.h"

namespace vorn {

bool isAsked(const GameState& g, int button, int keyCode) {
  return g.inputDevice == kJoystick ? button == 1 : isKeyDown(g, keyCode);
}

bool isEscapeAsked(GameState& g) {
  // A later key may have taken the place of Escape, but not of what it left behind.
  if (g.lastKeyCode == key::kEscape) g.escapePressed = 1;
  return g.escapePressed == 1;
}

bool isUpShiftAsked(const GameState& g) {
  return isAsked(g, g.btnUpShift, g.keyMapUpShift);
}

bool isHornAsked(const GameState& g) {
  return isAsked(g, g.btnHorn, g.keyMapHorn);
}

bool waitForStartEngine(GameState& g) {
  do {
    readRaceDevice(g);
    g.platform.yield();
    if (isEscapeAsked(g)) return false;
  } while (!isAsked(g, g.btnStartEngine, g.keyMapStartEngine));
  return true;
}

}  // namespace vorn
