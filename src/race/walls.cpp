#include "race/walls.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "clock/waits.h"
#include "input/events.h"
#include "race/drive_train.h"
#include "race/start_controls.h"
#include "sound/playback.h"
#include "speech/speech.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr double kContactLoss = 2;  // mph
constexpr int kScrapePan = 500;
constexpr int kContactsForSure = 20;  // more is a crash in any case
constexpr int kContactsAtLeast = 10;  // fewer is none
constexpr int kMarblesThatSave = 10;  // more ticks in the marbles than this soften the blow
constexpr double kCrashCostTicks = 289;
constexpr int kRestartQuieterBy = 800;
constexpr int kCueAfterCrashQuieterBy = 2000;
constexpr int kEngineHertz = 22051;

/// Scrapes along the wall; returns whether it is a crash.
bool scrape(GameState& g) {
  g.speed = std::max(0.0, g.speed - kContactLoss);
  int pan = 0;
  if (g.lateralPosition >= kRightWall) {
    g.lateralPosition = kRightWall;
    pan = kScrapePan;
  }
  if (g.lateralPosition <= kLeftWall) {
    g.lateralPosition = kLeftWall;
    pan = -kScrapePan;
  }
  ++g.wallTicks;
  if (g.wallScrapePlaying == 0) {
    g.sound10Buffer->SetPan(pan);
    g.sound10Buffer->Play(SoundBuffer::kLooping);
    g.wallScrapePlaying = 1;
  }
  if (g.wallTicks > kContactsForSure) return true;
  return g.wallTicks >= kContactsAtLeast && g.marblesTicks <= kMarblesThatSave;
}

void playImpact(GameState& g) {
  clk(g);
  play(g, "vorn15");
  g.engineBuffer->Stop();
  play2(g, "vorn11");
  dyke(g, 0.1);
  clk(g);
  stopall(g);
  g.engineBuffer->SetCurrentPosition(0);
}

/// The wreck comes to rest and a marshal says what to do; any key cuts it short.
void playAftermath(GameState& g) {
  while (g.oneShotBuffer.isPlaying() && g.lastKeyCode.empty()) {
    if (g.inputDevice == kJoystick) pollController(g);
    readKeyboard(g);
    g.platform.yield();
    if (g.btnSpeedometer == 1 || isKeyDown(g, g.keyMapSpeedometer)) g.lastKeyCode = "1";
  }
  if (!g.lastKeyCode.empty()) {
    g.oneShotBuffer->Stop();
    return;
  }
  play3(g, "vorn12");
  if (g.lastKeyCode.empty()) play3(g, "vorn13");
  if (g.lastKeyCode.empty()) play(g, "vorn14");
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
  g.warnBuffer->Play(SoundBuffer::kLooping);
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
    const bool isGas = g.inputDevice == kJoystick ? g.joyGasBrake < 0 : isKeyDown(g, g.keyMapGas);
    if (isGas) g.oneShotBuffer->Stop();
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
    g.engineRpm = wholePart(std::abs(g.joyGasBrake) / 100.0);
    PlayRPM(g);
    if (isUpShiftAsked(g)) {
      g.raceTicks += kCrashCostTicks;
      g.upShiftHeld = 0;
      UpShift(g);
      return;
    }
  }
}

void crash(GameState& g) {
  g.forceCrash = 0;
  playImpact(g);
  g.warnBuffer->SetVolume(g.soundVolume - kCueAfterCrashQuieterBy);
  g.warnBuffer->Play(SoundBuffer::kLooping);
  playAftermath(g);
  g.engineBuffer->SetFrequency(kEngineHertz);
  if (g.escapePressed == 1) return;
  putCarBack(g);
  if (restartEngine(g)) waitForShift(g);
}

}  // namespace

void SetWind(GameState& g) {
  const double fromMiddle = std::fabs(kMiddle - g.lateralPosition);
  const int shift = wholePart(fromMiddle * 20);
  const bool isLeft = g.lateralPosition < kMiddle;
  const int pan = isLeft ? shift : -shift;
  const double nearer = -1000 + fromMiddle * 20;
  const double farther = -1000 - fromMiddle * 20;
  g.wallLeftBuffer->SetPan(-1100 + pan);
  g.wallRightBuffer->SetPan(1100 + pan);
  g.wallLeftBuffer->SetVolume(roundToInt(isLeft ? nearer : farther));
  g.wallRightBuffer->SetVolume(roundToInt(isLeft ? farther : nearer));
}

void playsignpoll(GameState& g) {
  constexpr int kLeft = 1, kRight = 2;
  constexpr double kHertzAMile = 100;
  constexpr double kSlowestHertz = 8000;
  if (g.trackLightPolls == kOff) return;
  g.poleSide = g.poleSide == kRight ? kLeft : kRight;
  // Both pans grow with the distance from the middle: the left pole moves
  // inward, the right one outward. It sounds that way on purpose.
  const int shift = wholePart(std::fabs(kMiddle - g.lateralPosition) * 20);
  const bool isLeft = g.poleSide == kLeft;
  const double volume = isLeft ? g.lateralPosition * -10 : -1000 + g.lateralPosition * 10;
  g.sound29Buffer->SetPan((isLeft ? -1400 : 1400) + shift);
  g.sound29Buffer->SetVolume(roundToInt(volume));
  const double hertz = g.speed * kHertzAMile;
  if (hertz < kSlowestHertz) return;
  g.sound29Buffer->SetFrequency(roundToInt(hertz));
  g.sound29Buffer->SetCurrentPosition(0);
  g.platform.yield(0);
  g.sound29Buffer->Play(SoundBuffer::kOnce);
  g.platform.yield(0);
}

void c4c(GameState& g) {
  if (g.forceCrash == 1 || scrape(g)) crash(g);
}

void stopWallScrape(GameState& g) {
  if (g.wallScrapePlaying != 1) return;
  g.sound10Buffer->Stop();
  g.wallScrapePlaying = 0;
}

}  // namespace vorn
