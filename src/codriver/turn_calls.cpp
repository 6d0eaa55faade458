#include "codriver/turn_calls.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "race/drive_train.h"
#include "race/steering.h"
#include "race/walls.h"

namespace vorn {
namespace {

constexpr int kFullGas = 20;
constexpr int kGears = 4;

constexpr int kCallPan = 3000;  // hundredths of a decibel
constexpr int kCallVolume = -300;
constexpr int kGapMs = 60;
// From the gentlest bend to the hairpins of the dirt road, in hertz.
constexpr double kLowestCall = 200, kHighestCall = 1990;
constexpr double kPitchOfOneUnit = 400;
constexpr double kPitchGrowth = 0.43;  // the power of the push by which it grows
constexpr double kUnitsAMs = 40;
constexpr int kShortestToneMs = 60, kLongestToneMs = 450;
constexpr int kJumpPitch = 880;
constexpr int kSteerPitch = 1320;
constexpr int kSteerMs = 140;

constexpr int kKeyBuildUp = 200, kFullLock = 10000;
constexpr double kOutermost = 92;  // lateral units from the inside that a turn may carry the car to
constexpr double kInnermost = 8;

bool isSameTurn(const Segment& a, const Segment& b) {
  return a.push.turn == b.push.turn && a.push.fixed == b.push.fixed && a.push.divisor == b.push.divisor &&
         a.push.rule == b.push.rule;
}

/// The car after a tick of full gas in the gear that pulls it best.
double fastestNext(const RaceState& car) {
  double fastest = car.speed;
  for (int gear = 1; gear <= kGears; ++gear) {
    RaceState tried;
    tried.speed = car.speed;
    tried.gear = gear;
    tried.topGearUnlimited = car.topGearUnlimited;
    applyGas(tried, kFullGas);
    fastest = std::max(fastest, tried.speed);
  }
  return fastest;
}

}  // namespace

std::vector<CalledTurn> turnsOf(const Track& track) {
  std::vector<CalledTurn> turns;
  double start = 0;
  for (std::size_t i = 0; i < track.segments.size(); ++i) {
    const Segment& segment = track.segments[i];
    const bool goesOn = i > 0 && isSameTurn(track.segments[i - 1], segment);
    if (segment.push.turn != Turn::kNone && goesOn) {
      turns.back().length += segment.length;
    } else if (segment.push.turn != Turn::kNone || segment.atEnd != nullptr) {
      turns.push_back({i, start, segment.length, segment.push.turn});
    }
    start += segment.length;
  }
  return turns;
}

double pushAt(const Segment& segment, double speed) {
  RaceState car;
  car.speed = speed;
  car.lateralPosition = kMiddle;
  pushCar(car, segment.push);
  return std::fabs(car.lateralPosition - kMiddle);
}

double soonestMs(const RaceState& car, double distance) {
  constexpr double kNever = std::numeric_limits<double>::infinity();
  constexpr double kFarAhead = 10000;  // ms; more than any call is made ahead
  RaceState driven;
  driven.speed = car.speed;
  driven.topGearUnlimited = car.topGearUnlimited;
  double ms = 0;
  for (; distance > 0 && ms < kFarAhead; ms += kTickMs) {
    driven.speed = fastestNext(driven);
    if (distance <= driven.speed) return ms + kTickMs * distance / driven.speed;
    distance -= driven.speed;
  }
  return distance > 0 ? kNever : ms;
}

int pitchOfPush(double push) {
  return static_cast<int>(
      std::lround(std::clamp(kPitchOfOneUnit * std::pow(push, kPitchGrowth), kLowestCall, kHighestCall)));
}

double pushOfPitch(int pitch) {
  return std::pow(pitch / kPitchOfOneUnit, 1 / kPitchGrowth);
}

int toneMs(double length) {
  return std::clamp(static_cast<int>(std::lround(length / kUnitsAMs)), kShortestToneMs, kLongestToneMs);
}

double lengthOfTone(int milliseconds) {
  return milliseconds * kUnitsAMs;
}

std::vector<Beep> turnCall(const CalledTurn& turn, double push) {
  const bool isJump = turn.turn == Turn::kNone;
  const int pan = isJump ? 0 : turn.turn == Turn::kLeft ? -kCallPan : kCallPan;
  const Tone tone{isJump ? kJumpPitch : pitchOfPush(push), kCallVolume, pan};
  const int length = toneMs(turn.length);
  return {{0, length, tone}, {length + kGapMs, length, tone}};
}

int figureMs(const std::vector<Beep>& beeps) {
  return beeps.empty() ? 0 : beeps.back().startMs + beeps.back().lengthMs;
}

int keyLead(const Segment& turn, double speed, double lateralPosition) {
  const double push = pushAt(turn, speed);
  const double fromInside = turn.push.turn == Turn::kLeft ? lateralPosition : kRightWall - lateralPosition;
  const int ticksInTurn = speed > 0 ? static_cast<int>(std::ceil(turn.length / speed)) : 0;
  int lead = 0;
  for (int ticks = 0; ticks <= kLongestKeyLead; ++ticks) {
    double place = fromInside, furthest = fromInside, nearest = fromInside;
    for (int tick = 1; tick <= ticks + ticksInTurn; ++tick) {
      const bool isInTurn = tick > ticks;
      const double step = lateralStep(std::min(kKeyBuildUp * tick, kFullLock));
      if (isInTurn && step >= push) break;
      place += (isInTurn ? push : 0) - step;
      furthest = std::max(furthest, place);
      nearest = std::min(nearest, place);
    }
    if (nearest < kInnermost) break;  // it would have to be let go of before the turn
    lead = ticks;
    if (furthest <= kOutermost) break;
  }
  return lead;
}

std::vector<Beep> steerCall(Turn turn) {
  return {{0, kSteerMs, {kSteerPitch, kCallVolume, turn == Turn::kLeft ? -kCallPan : kCallPan}}};
}

}  // namespace vorn
