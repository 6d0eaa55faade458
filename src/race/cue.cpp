#include "race/cue.h"

#include <algorithm>

#include "sound/loading.h"
#include "sound/playback.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr int kPanPerLateralUnit = 10;

}  // namespace

std::string cueFile(int number) {
  return "vorn1t" + std::to_string(number);
}

// Both are clamped: a car that slides back down a banked turn, or is past the end
// of the cue's way, leaves the range.
double cueVolume(const RaceState& car, int soundVolume) {
  const double way = car.lapPosition * 100;
  const double volume = -(car.warnScale * (100 - way / car.warnDistance)) + soundVolume;
  return std::clamp(volume, -10000.0, 0.0);
}

double cuePan(const RaceState& car) {
  return std::clamp(car.warnPan - car.lateralPosition * kPanPerLateralUnit, -10000.0, 10000.0);
}

void followCue(RaceState& car, const Cue& cue) {
  car.warnDistance = cue.length;
  car.warnScale = cue.scale;
  car.warnPan = cue.pan;
  car.warnLoops = 0;
}

void startwarn(GameState& g, const Cue& cue) {
  followCue(g, cue);
  fillSlot(g, g.warnBuffer, cueFile(cue.number));
  g.warnBuffer->SetCurrentPosition(0);
  g.warnBuffer->SetVolume(kNearlySilent);
  g.baseFrequency = g.warnBuffer->GetFrequency() + 1;
  g.warnBuffer->SetPan(cue.pan);
  g.warnBuffer->SetFrequency(g.baseFrequency);
  g.warnLoops = 1;
  resumeCue(g);
}

void resumeCue(GameState& g) {
  if (g.warnLoops == 1) g.warnBuffer->Play(SoundBuffer::kLooping);
}

void awarn(GameState& g) {
  g.warnBuffer->SetVolume(roundToInt(cueVolume(g, g.soundVolume)));
  g.warnBuffer->SetPan(roundToInt(cuePan(g)));
}

}  // namespace vorn
