#include "race/controls.h"

#include <cstdlib>

#include "input/events.h"
#include "state/key_names.h"
#include "text/numbers.h"

namespace vorn {

bool isAsked(const InputState& in, int button, int keyCode) {
  return in.inputDevice == kJoystick ? button == 1 : isKeyDown(in, keyCode);
}

bool isUpShiftAsked(const InputState& in) {
  return isAsked(in, in.btnUpShift, in.keyMapUpShift);
}

bool isHornAsked(const InputState& in) {
  return isAsked(in, in.btnHorn, in.keyMapHorn);
}

bool isGasAsked(const InputState& in, int beyond) {
  return in.inputDevice == kJoystick ? in.joyGasBrake < beyond : isKeyDown(in, in.keyMapGas);
}

double revsAsked(const InputState& in) {
  if (in.inputDevice == kJoystick) return wholePart(std::abs(in.joyGasBrake) / 100.0);
  return isKeyDown(in, in.keyMapGas) ? 100 : 0;
}

bool isEscapeAsked(InputState& in) {
  // A later key may have taken the place of Escape, but not of what it left behind.
  if (in.lastKeyCode == key::kEscape) in.escapePressed = 1;
  return in.escapePressed == 1;
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
