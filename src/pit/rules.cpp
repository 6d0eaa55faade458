#include "pit/rules.h"

#include <algorithm>

#include "text/numbers.h"

namespace vorn {
namespace {

constexpr PitSide kLeft{.inward = 1, .laneEntry = 5, .boxEdge = 20, .exitPlace = 13, .trackPlace = 10};
constexpr PitSide kRight{.inward = -1, .laneEntry = 95, .boxEdge = 80, .exitPlace = 87, .trackPlace = 90};

constexpr double kSpeedLimit = 65;  // mph; the signs say 50
constexpr double kBoxBegins = 2500;
constexpr double kBoxEnds = 3500;  // both ends belong to the box
/// Spoken as 30 and 10 seconds, a little less than they are.
constexpr double kSpeedingTicks = 300;
constexpr double kPlaceTicks = 100;

}  // namespace

const PitSide& pitSide(int side) {
  return side == 1 ? kLeft : kRight;
}

double lanePlace(const PitSide& side, double lapPosition) {
  return side.laneEntry + side.inward * (lapPosition / 30);
}

void driftInLane(RaceState& car, const PitSide& side) {
  if (car.speed == 0) return;
  car.lateralPosition += side.inward * 0.2;
  car.lateralPosition += side.inward * (car.speed / (35 - car.lapPosition / 350));
}

double boxVoiceFrequency(double speed) {
  return std::min(8000 + 281 * speed, 48000.0);
}

bool isSpeeding(double speed) {
  return speed > kSpeedLimit;
}

PitVerdict judge(const PitArrival& arrival, const PitSide& side) {
  PitVerdict verdict;
  const auto charge = [&](const std::string& sentence, double ticks) {
    verdict.message += sentence;
    verdict.ticks += ticks;
  };
  if (arrival.speeding) {
    charge(" 30 second penalty for speeding " + numberText(roundDecimals(*arrival.speeding, 1)) +
               " miles an hour. ",
           kSpeedingTicks);
  }
  if (arrival.lapPosition > kBoxEnds) {
    charge(" 10 second penalty for passing your pit box. ", kPlaceTicks);
  }
  if (arrival.lapPosition < kBoxBegins) {
    charge(" 10 second penalty for stopping short of your pit box. ", kPlaceTicks);
  }
  if ((arrival.lateralPosition - side.boxEdge) * side.inward > 0) {
    charge(" 10 second penalty for stopping outside of your pit box. ", kPlaceTicks);
  }
  return verdict;
}

}  // namespace vorn
