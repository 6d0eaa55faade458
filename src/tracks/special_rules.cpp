#include "tracks/special_rules.h"

#include "clock/waits.h"
#include "race/car_tick.h"
#include "race/cue.h"
#include "race/walls.h"
#include "sound/playback.h"

namespace vorn {
namespace {

constexpr double kRampLeft = 40;  // both ends belong to the ramp
constexpr double kRampRight = 60;
constexpr double kSlowestFlight = 99;   // mph, clean
constexpr double kTooFastFlight = 131;  // mph, no longer clean
constexpr double kLandingLoss = 75;     // mph
constexpr double kFallSeconds = 1;
constexpr double kPlaceInTheWater = 3000;  // where the cue is heard from while the car is fished out

constexpr const char* kLeaveRamp = "vorn20";
constexpr const char* kFly = "vorn7";
constexpr const char* kLand = "vorn21";
constexpr const char* kSplash = "vorn22";

// Escape cuts all of it at once: then these return false.

void flyCleanly(GameState& g) {
  play2(g, kFly);
  do {
    readShifts(g, 1);
  } while (g.oneShotBuffer.isPlaying() && g.escapePressed != 1);
  g.oneShotBuffer->Stop();
  if (g.escapePressed == 1) return;
  g.lapPosition += g.speed;
  g.speed -= kLandingLoss;
  play2(g, kLand);
}

bool flyTooFar(GameState& g) {
  play2(g, kFly);
  return hearOut(g);
}

bool fallShort(GameState& g) {
  play2(g, kFly);
  if (dykeUnlessEscaped(g, kFallSeconds)) return true;
  stopOneShot(g);
  return false;
}

bool splash(GameState& g) {
  play2(g, kSplash);
  dyke(g, 0.2);
  g.engineBuffer->Stop();
  return hearOut(g);
}

void crashInTheWater(GameState& g, const Segment& run, const Segment& landing) {
  g.forceCrash = 1;
  g.lapPosition = kPlaceInTheWater;
  startwarn(g, segmentCue(landing));
  c4c(g);
  g.lapPosition = run.length;
}

}  // namespace

void unlimitTopGear(RaceState& car) {
  car.topGearUnlimited = 1;
}

void driveBankedTurn(RaceState& car) {
  if (car.speed != 0) {
    const double grip = (car.lateralPosition + 0.8) / 2 + 40;
    car.lateralPosition += car.speed / grip;
  }
  car.lapPosition -= car.lateralPosition / 10;
}

Flight flightOf(double lateralPosition, double speed) {
  if (lateralPosition < kRampLeft || lateralPosition > kRampRight) return Flight::kMissedRamp;
  if (speed < kSlowestFlight) return Flight::kTooSlow;
  return speed < kTooFastFlight ? Flight::kClean : Flight::kTooFast;
}

void jumpSwimmingHole(GameState& g, const Segment& run, const Segment& landing) {
  const Flight flight = flightOf(g.lateralPosition, g.speed);
  if (flight != Flight::kMissedRamp && !playUnlessEscaped(g, kLeaveRamp)) return;
  bool isInTheWater = false;
  switch (flight) {
    case Flight::kClean:
      flyCleanly(g);
      break;
    case Flight::kTooFast:
      isInTheWater = flyTooFar(g);
      break;
    case Flight::kTooSlow:
      isInTheWater = fallShort(g) && splash(g);
      break;
    case Flight::kMissedRamp:
      isInTheWater = splash(g);
      break;
  }
  if (isInTheWater) crashInTheWater(g, run, landing);
}

}  // namespace vorn
