#include "race/steering.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "input/events.h"
#include "race/walls.h"
#include "sound/playback.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr int kFullLock = 10000;
constexpr int kKeyBuildUp = 200;      // a tick
constexpr int kTicksOfExtraLoss = 4;  // a fresh key press costs half as much again before this tick
constexpr int kTyrePan = 400;
constexpr double kMarblesLoss = 2;  // mph a tick
constexpr int kMarblesQuieterBy = 100;

/// Turns held keys into the reading a wheel would give.
void buildUpKeys(GameState& g) {
  const bool isLeft = isKeyDown(g, g.keyMapSteerLeft);
  const bool isRight = isKeyDown(g, g.keyMapSteerRight);
  ++g.steerKeyTicks;
  if (!isLeft) g.steerKeyLeft = 0;
  if (!isRight) g.steerKeyRight = 0;
  if (isLeft) {
    g.steerKeyLeft = std::max(g.steerKeyLeft - kKeyBuildUp, -kFullLock);
    g.joySteering = g.steerKeyLeft;
  }
  if (isRight) {
    g.steerKeyRight = std::min(g.steerKeyRight + kKeyBuildUp, kFullLock);
    g.joySteering = g.steerKeyRight;
  }
  if (isLeft && isRight) g.joySteering = g.steerKeyLeft = g.steerKeyRight = 0;
}

bool isSteered(const GameState& g) {
  if (g.speed == 0) return false;
  if (g.inputDevice == kJoystick) return g.joySteering != 0;
  return isKeyDown(g, g.keyMapSteerLeft) || isKeyDown(g, g.keyMapSteerRight);
}

void soundTyres(GameState& g, double loss) {
  const double tyre = std::min(loss * 100 / 1.5 * 12 - 1300, 0.0);
  g.sound9Buffer->SetPan(g.joySteering >= 0 ? -kTyrePan : kTyrePan);
  g.sound9Buffer->SetVolume(roundToInt(g.soundVolume + tyre));
}

void steer(GameState& g) {
  if (g.inputDevice != kJoystick) buildUpKeys(g);
  g.lateralPosition += lateralStep(g.joySteering);
  const double loss = steeringLoss(g.speed, g.joySteering);
  g.speed -= g.steerDrag * loss;
  if (g.inputDevice != kJoystick && g.steerKeyTicks < kTicksOfExtraLoss) g.speed -= g.steerDrag * loss / 2;
  g.speed = std::max(0.0, g.speed);
  soundTyres(g, loss);
}

void soundMarbles(GameState& g) {
  const double pan =
      g.lateralPosition <= kMiddle ? g.lateralPosition * -20 : (kRightWall - g.lateralPosition) * 20;
  g.sound18Buffer->SetPan(roundToInt(pan));
  g.sound18Buffer->SetVolume(g.soundVolume - kMarblesQuieterBy);
  g.sound18Buffer->SetFrequency(roundToInt(g.speed * 63 + 8000));
}

/// Returns false where the driver gave up in the crash that a contact became.
bool driveOverMarbles(GameState& g) {
  g.speed = std::max(0.0, g.speed);
  if (g.lateralPosition >= kGrooveLeft && g.lateralPosition <= kGrooveRight) {
    g.marblesTicks = 0;
    g.sound18Buffer->SetVolume(kNearlySilent);
    return true;
  }
  ++g.marblesTicks;
  if (g.lateralPosition <= kLeftWall) {
    c4c(g);
    if (g.escapePressed == 1) return false;
  }
  if (g.lateralPosition >= kRightWall) {
    c4c(g);
    if (g.escapePressed == 1) return false;
  }
  if (g.marblesTicks == 0) return true;  // there was a crash
  g.speed = std::max(0.0, g.speed - kMarblesLoss);
  soundMarbles(g);
  return true;
}

}  // namespace

double lateralStep(int joySteering) {
  return roundDecimals(joySteering / 1500.0, 2);
}

double steeringLoss(double speed, int joySteering) {
  return speed / 342 + std::abs(joySteering) / 15000.0;
}

bool SteerIt(GameState& g) {
  if (isSteered(g)) {
    steer(g);
  } else {
    if (g.inputDevice != kJoystick) g.steerKeyTicks = 0;
    g.sound9Buffer->SetVolume(kNearlySilent);
  }
  return driveOverMarbles(g);
}

}  // namespace vorn
