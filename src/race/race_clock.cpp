#include "race/race_clock.h"

#include <cmath>

#include "text/numbers.h"

namespace vorn {
namespace {

constexpr double kUnitsATickAtTheLine = 205;  // fixed, whatever the car's speed

}  // namespace

double secondsOfTicks(double raceTicks) {
  const double seconds = raceTicks / kTicksPerSecond;
  return roundDecimals(std::floor(seconds * 1000) / 1000, 3);
}

void settimes(RaceState& race, double finishPosition) {
  const double overshoot = race.lapPosition - finishPosition;
  race.raceTicks -= overshoot / kUnitsATickAtTheLine;
  race.raceTime = secondsOfTicks(race.raceTicks);
  race.raceMinutes = 0;
  race.raceSeconds = roundDecimals(race.raceTime, 3);
  for (; race.raceSeconds >= 60; race.raceSeconds -= 60) ++race.raceMinutes;
  // `raceHours` keeps what earlier races of the run have left in it.
  for (; race.raceMinutes >= 60; race.raceMinutes -= 60) ++race.raceHours;
}

}  // namespace vorn
