#include "race/drive_train.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "clock/waits.h"
#include "input/events.h"
#include "race/announcements.h"
#include "race/controls.h"
#include "sound/playback.h"
#include "speech/speech.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr int kEngineHertz = 22051;
constexpr int kTopGear = 4;
constexpr int kFullGas = 20;
constexpr int kLaunchingGas = -10;
constexpr double kFullGasTravel = 9700;  // the last three percent of the travel are full gas already

constexpr GearLaw kGears[] = {
    {0, 0, 0, 1},  // neutral
    {2.5, 78, 4, 75}, {2.2, 128, 3.6, 125}, {1.8, 178, 3.2, 175}, {1.5, 228, 2.8, 225},
};

struct EngineTape {
  int step;    ///< bytes a percent of revolutions
  int jitter;  ///< a steady engine plays a stretch up to this many bytes further on
};

constexpr EngineTape kEngineTapes[] = {{2001, 525}, {2017, 525}, {1010, 242},
                                       {842, 222},  {1675, 225}, {2444, 525}};

constexpr double kBytesAMile = 503.8;  // brake tape
constexpr double kFirstBrakeByte = 1000;
constexpr double kLastBrakeByte = 114848;
constexpr double kFullBrakeTravel = 10000;

/// Leaving neutral with the gas pressed.
void launch(GameState& g) {
  if (g.inputDevice == kJoystick) {
    spendButton(g, &InputState::btnUpShift);  // the same press must not shift again
  }
  if (!isGasAsked(g, kLaunchingGas)) return;
  play2(g, "vorn3");
  g.speed = g.engineRpm / 5 + 4;
}

void playShift(GameState& g) {
  g.sound19Buffer->Play(SoundBuffer::kOnce);
  saygear2(g);
}

void rewindShift(GameState& g) {
  g.sound19Buffer->SetCurrentPosition(0);
  g.platform.yield(0);
}

/// What the brake takes a tick, mph; 0: it is not applied.
double deceleration(const GameState& g) {
  if (g.speed == 0) return 0;
  if (g.inputDevice == kJoystick) return g.joyGasBrake >= 1 ? g.joyGasBrake / kFullBrakeTravel : 0;
  return isKeyDown(g, g.keyMapBrake) ? 1 : 0;
}

}  // namespace

int gasOfAxis(int joyGasBrake) {
  if (joyGasBrake > 0) return 0;
  const double percent = std::abs(joyGasBrake) * 100 / kFullGasTravel;
  return std::min(roundToInt(percent / 5), kFullGas);
}

double targetSpeed(int gas, int gear) {
  if (gas == 0) return 0;
  return 4 * gas + 50 * std::clamp(gear - 1, 0, kTopGear - 1);
}

void applyGas(RaceState& car, int gas) {
  if (car.gear == 0) return;
  const GearLaw& law = kGears[car.gear];
  const bool isUnlimited = car.gear == kTopGear && car.topGearUnlimited == 1;
  if (car.speed < targetSpeed(gas, car.gear)) {
    car.speed += gas / 100.0 + law.accelerate;
    if (car.speed > law.cap && !isUnlimited) car.speed = law.cap;
  } else if (!(isUnlimited && gas == kFullGas)) {
    car.speed = std::max(0.0, car.speed - (gas / 100.0 + law.coast));
  }
}

void agp(GameState& g) {
  int gas = 0;
  if (g.fuel != 0) {
    gas = g.inputDevice == kJoystick ? gasOfAxis(g.joyGasBrake) : isKeyDown(g, g.keyMapGas) ? kFullGas : 0;
  }
  applyGas(g, gas);
}

void prpm(GameState& g) {
  if (g.gear >= 1) g.engineRpm = g.speed * 100 / kGears[g.gear].revRange;
  g.engineRpm = std::clamp(g.engineRpm, 0.0, 100.0);
  g.soundRpm = g.engineRpm;
  aprpms(g);
}

void PlayRPM(GameState& g) {
  dyke(g, 0.02);
  if (++g.revToggle > 1) {
    g.revToggle = 0;
    return;
  }
  // Nothing stops it at its aim: the sound hunts around it.
  if (g.engineRpm > g.soundRpm) {
    g.soundRpm += 8;
  } else {
    g.soundRpm = std::max(0.0, g.soundRpm - 5);
  }
  aprpms(g);
}

void aprpms(GameState& g) {
  if (g.soundRpm < 2 && ++g.idleSoundSkip > 2) {
    g.idleSoundSkip = 0;
    return;
  }
  double position = 0;
  if (g.engineSound >= 1 && g.engineSound <= static_cast<int>(std::size(kEngineTapes))) {
    const EngineTape& tape = kEngineTapes[g.engineSound - 1];
    position = tape.step * g.soundRpm;
    if (g.soundRpm > 2) position += wholePart(tape.jitter * g.platform.randomFraction()) + 1;
  }
  g.engineBuffer->SetCurrentPosition(roundToInt(position));
}

void UpShift(GameState& g) {
  if (g.upShiftHeld == 1) return;
  g.upShiftHeld = 1;
  rewindShift(g);
  ++g.gear;
  if (g.gear == 1) {
    stopspeech(g);
    launch(g);
  }
  if (g.gear > kTopGear) {
    g.gear = kTopGear;
  } else {
    playShift(g);
  }
}

void DownShift(GameState& g) {
  if (g.downShiftHeld == 1) return;
  g.downShiftHeld = 1;
  rewindShift(g);
  --g.gear;
  if (g.gear < 1) {
    g.gear = 1;
  } else {
    playShift(g);
  }
}

void dobk(GameState& g) {
  const double loss = deceleration(g);
  if (loss == 0) {
    g.sound8Buffer->Stop();
    g.sound8Buffer->SetCurrentPosition(0);
    return;
  }
  g.speed = std::max(0.0, g.speed - loss);
  g.sound8Buffer->Play(SoundBuffer::kLooping);
  g.sound8Buffer->SetCurrentPosition(
      roundToInt(std::clamp(g.speed * kBytesAMile, kFirstBrakeByte, kLastBrakeByte)));
}

void overRev(GameState& g) {
  const double threshold = 50 * g.gear + 29;
  const double hertz = g.speed > threshold ? 22050 + 200 * (g.speed - threshold) : kEngineHertz;
  g.engineBuffer->SetFrequency(roundToInt(hertz));
}

void resetEnginePitch(SoundState& sound) {
  sound.engineBuffer->SetFrequency(kEngineHertz);
}

void burnFuel(RaceState& car) {
  if (car.engineRpm <= 0) return;
  const double revolutionsAGallon = car.engineRpm <= 85 ? 100000 : 100000 - 100 * car.engineRpm;
  car.fuel = std::max(0.0, car.fuel - car.engineRpm / revolutionsAGallon);
}

}  // namespace vorn
