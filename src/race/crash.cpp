#include "race/crash.h"

#include "clock/waits.h"
#include "input/events.h"
#include "race/controls.h"
#include "race/cue.h"
#include "race/drive_train.h"
#include "race/walls.h"
#include "sound/playback.h"
#include "speech/speech.h"

namespace vorn {
namespace {

constexpr double kCrashCostTicks = 289;
constexpr int kRestartQuieterBy = 800;
constexpr int kCueAfterCrashQuieterBy = 2000;

/// Returns false where the driver gave up.
bool playImpact(GameState& g) {
  clk(g);
  if (!playUnlessEscaped(g, "vorn15")) return false;
  g.engineBuffer->Stop();
  play2(g, "vorn11");
  dyke(g, 0.1);
  clk(g);
  stopall(g);
  g.engineBuffer->SetCurrentPosition(0);
  return true;
}

/// Escape may have been pressed where only its code has been forgotten since.
bool isCutShort(const InputState& in) {
  return !in.lastKeyCode.empty() || in.escapePressed == 1;
}

/// The wreck comes to rest and a marshal says what to do; any key cuts it short.
void playAftermath(GameState& g) {
  while (g.oneShotBuffer.isPlaying() && !isCutShort(g)) {
    if (g.inputDevice == kJoystick) pollController(g);
    readKeyboard(g);
    g.platform.yield();
    if (g.btnSpeedometer == 1 || isKeyDown(g, g.keyMapSpeedometer)) g.lastKeyCode = "1";
  }
  if (isCutShort(g)) {
    g.oneShotBuffer->Stop();
    return;
  }
  play3(g, "vorn12");
  if (!isCutShort(g)) play3(g, "vorn13");
  if (!isCutShort(g)) playUnlessEscaped(g, "vorn14");
}

void putCarBack(GameState& g) {
  clk(g);
  g.lateralPosition = kMiddle;
  g.speed = 0;
  ass(g);
  g.gear = 0;
  g.marblesTicks = 0;
  g.wallTicks = 0;
  sars(g);
  awarn(g);
  resumeCue(g);
  g.btnSpeedometer = 0;
}

/// Starts the engine again; returns false where the driver gave up.
bool restartEngine(GameState& g) {
  if (!waitForStartEngine(g)) return false;
  play2(g, "vorn2");
  g.oneShotBuffer->SetVolume(g.soundVolume - kRestartQuieterBy);
  do {
    readRaceDevice(g);
    g.platform.yield();
    if (isEscapeAsked(g)) {
      stopOneShot(g);  // or it would run on in the menu
      return false;
    }
    if (isGasAsked(g, 0)) g.oneShotBuffer->Stop();
  } while (g.oneShotBuffer.isPlaying());
  g.engineRpm = 0;
  g.engineBuffer->SetCurrentPosition(0);
  g.engineBuffer->Play(SoundBuffer::kLooping);
  PlayRPM(g);
  return true;
}

/// Revs in neutral until the driver shifts up.
void waitForShift(GameState& g) {
  for (;;) {
    readRaceDevice(g);
    g.platform.yield();
    if (g.inputDevice != kJoystick) g.joyGasBrake = isKeyDown(g, g.keyMapGas) ? -10000 : 0;
    if (isEscapeAsked(g)) return;
    g.engineRpm = revsAsked(g);
    PlayRPM(g);
    if (isUpShiftAsked(g)) {
      g.raceTicks += kCrashCostTicks;
      g.upShiftHeld = 0;
      UpShift(g);
      return;
    }
  }
}

}  // namespace

void crash(GameState& g) {
  g.forceCrash = 0;
  if (playImpact(g)) {
    g.warnBuffer->SetVolume(g.soundVolume - kCueAfterCrashQuieterBy);
    resumeCue(g);
    playAftermath(g);
  }
  resetEnginePitch(g);
  if (g.escapePressed == 1) return;
  putCarBack(g);
  if (restartEngine(g)) waitForShift(g);
}

}  // namespace vorn
