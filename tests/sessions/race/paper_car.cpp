#include "sessions/race/paper_car.h"

#include <cmath>

namespace vorn {
namespace {

struct Stretch {
  double length;
  double scale;
  double pan;
  double push;     // a tick, at any speed
  double divisor;  // mph for one more
};

constexpr Stretch kMaple[] = {{},
                              {30000, 30, -3000, 0, 0},
                              {9000, 15, -2000, 0.48, 125},
                              {9000, 15, -2000, 0.48, 125},
                              {30000, 30, -3000, 0, 0},
                              {9000, 15, -2000, 1.0, 84},
                              {4800, 20, -3000, 0, 0},
                              {9000, 15, -2000, 1.3, 69}};
constexpr double kSteerDrag = 1.84;

double nearest(double value) {
  return std::nearbyint(value);
}

int whole(double value) {
  return static_cast<int>(nearest(value));
}

// 0 .. 20
double gasOf(const Hands& hands) {
  if (!hands.pedal) return hands.gasKey ? 20 : 0;
  if (*hands.pedal > 0) return 0;
  const double gas = nearest(-*hands.pedal * 100 / 9700.0 / 5);
  return gas > 20 ? 20 : gas;
}

double drive(double speed, int gear, double gas) {
  const double accelerate[] = {0, 2.5, 2.2, 1.8, 1.5};
  const double coast[] = {0, 4, 3.6, 3.2, 2.8};
  const double cap[] = {0, 78, 128, 178, 228};
  const double target = gas == 0 ? 0 : 4 * gas + 50 * (gear - 1);
  if (speed < target) return std::fmin(speed + (gas / 100 + accelerate[gear]), cap[gear]);
  return std::fmax(speed - (gas / 100 + coast[gear]), 0);
}

double burnt(double rpm) {
  if (rpm <= 0) return 0;
  return rpm <= 85 ? rpm / 100000 : rpm / (100000 - 100 * rpm);
}

}  // namespace

PaperTick nextTick(const TickReport& last, const TickReport& seen, const Hands& hands) {
  PaperTick next{seen, {}};
  TickReport& car = next.car;
  PaperSounds& sounds = next.sounds;

  // The track: where the segment begins and what it does to the car.
  const Stretch& stretch = kMaple[seen.segment];
  double way = last.lapPosition;
  if (seen.segment != last.segment) way -= kMaple[last.segment].length;
  double place = last.lateralPosition;
  if (stretch.divisor > 0 && last.speed != 0) place += stretch.push + last.speed / stretch.divisor;
  sounds.cueVolume = whole(-(stretch.scale * (100 - way * 100 / stretch.length)));
  sounds.cuePan = whole(stretch.pan - place * 10);

  // The engine.
  const double highest = 50 * last.gear + 29;
  sounds.engineHertz = last.speed > highest ? whole(22050 + 200 * (last.speed - highest)) : 22051;
  double speed = drive(last.speed, seen.gear, gasOf(hands));
  const double range[] = {1, 75, 125, 175, 225};
  car.engineRpm = std::fmin(speed * 100 / range[seen.gear], 100);
  car.soundRpm = car.engineRpm;

  // The steering.
  const bool isKeyboard = !hands.pedal;
  const bool isSteered = speed != 0 && (isKeyboard ? hands.leftKey || hands.rightKey : seen.joySteering != 0);
  car.steerKeyTicks = isKeyboard && isSteered ? last.steerKeyTicks + 1 : 0;
  sounds.tyreVolume = -6500;
  if (isSteered) {
    place += nearest(seen.joySteering / 1500.0 * 100) / 100;
    const double loss = speed / 342 + std::abs(seen.joySteering) / 15000.0;
    speed -= kSteerDrag * loss;
    if (isKeyboard && car.steerKeyTicks < 4) speed -= kSteerDrag * loss / 2;
    sounds.tyreVolume = whole(std::fmin(loss * 100 / 1.5 * 12 - 1300, 0));
  }
  const bool isInMarbles = place < 4 || place > 96;
  car.marblesTicks = isInMarbles ? last.marblesTicks + 1 : 0;
  if (isInMarbles) speed -= 2;

  // The walls.
  const double off = std::fabs(50 - place);
  const int shift = static_cast<int>(std::floor(off * 20));
  const bool isLeft = place < 50;
  sounds.wallLeftPan = -1100 + (isLeft ? shift : -shift);
  sounds.wallRightPan = 1100 + (isLeft ? shift : -shift);
  sounds.wallLeftVolume = whole(-1000 + (isLeft ? off : -off) * 20);
  sounds.wallRightVolume = whole(-1000 - (isLeft ? off : -off) * 20);

  // The brake.
  if (isKeyboard && hands.brakeKey) speed -= 1;
  if (!isKeyboard && *hands.pedal > 0) speed -= *hands.pedal / 10000.0;

  car.speed = std::fmax(speed, 0);
  car.lateralPosition = place;
  car.fuel = last.fuel - burnt(car.engineRpm);
  car.poleDistance = last.poleDistance + car.speed;
  if (car.poleDistance > 3000) car.poleDistance -= 3000;
  car.lapPosition = way + car.speed;
  car.raceTicks = last.raceTicks + 1;
  car.wallTicks = last.wallTicks;
  car.lapsCompleted = 0;
  car.pit = 0;
  return next;
}

}  // namespace vorn
