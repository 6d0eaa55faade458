#include "demo/road_book.h"

#include <algorithm>
#include <cmath>

namespace vorn {
namespace {

constexpr double kNoLimit = 240;  // mph, more than any car does
constexpr double kMiddle = 50;
constexpr double kGain = 1;           // mph a tick, about, at full gas
constexpr double kLookAhead = 30000;  // units
constexpr double kSlack = 250;        // units a driver is early with his brake
constexpr double kRunUp = 3000;       // units before the jump
constexpr double kStrict = 50;
constexpr double kLineUp = 5000;  // units before a turn at which its inside is made for

}  // namespace

RoadBook::RoadBook(const Track& track, const Skill& skill) : track_(track), skill_(skill) {
  for (std::size_t i = 0; i < track.segments.size(); ++i) fastest_.push_back(fastest(i));
}

Sight RoadBook::sightAfter(const TickReport& tick) const {
  Sight sight{.segment = static_cast<std::size_t>(std::max(tick.segment, 1) - 1),
              .lapPosition = tick.lapPosition,
              .lateralPosition = tick.lateralPosition,
              .speed = tick.speed,
              .gear = tick.gear};
  return steered(sight, 0);
}

Sight RoadBook::steered(const Sight& sight, double step) const {
  Sight next = sight;
  next.lateralPosition += step;
  if (next.lapPosition >= segment(next.segment).length) {
    next.lapPosition -= segment(next.segment).length;
    next.segment = (next.segment + 1) % track_.segments.size();
  }
  return next;
}

Sight RoadBook::pushed(Sight sight) const {
  RaceState car;
  car.speed = sight.speed;
  car.lapPosition = sight.lapPosition;
  car.lateralPosition = sight.lateralPosition;
  pushCar(car, segment(sight.segment).push);
  sight.lapPosition = car.lapPosition + sight.speed;
  sight.lateralPosition = car.lateralPosition;
  return sight;
}

double RoadBook::push(const Sight& sight) const {
  return pushed(sight).lateralPosition - sight.lateralPosition;
}

/// How far outward a turn carries a car that is steered against it from the beginning.
double RoadBook::driftThrough(const Segment& s, double speed, double step) const {
  RaceState car;
  car.speed = speed;
  car.lateralPosition = kMiddle;
  pushCar(car, s.push);
  const double push = std::fabs(car.lateralPosition - kMiddle);
  double drift = 0;
  double furthest = 0;
  for (double way = 0; way < s.length; way += speed) {
    drift = std::max(0.0, drift + push - step);
    furthest = std::max(furthest, drift);
    step = std::min(step + skill_.buildUp, skill_.topStep);
  }
  return furthest;
}

double RoadBook::fastest(std::size_t i) const {
  const Segment& s = segment(i);
  if (s.atEnd) return skill_.jumpSpeed;
  if (s.push.turn == Turn::kNone) return kNoLimit;
  const Turn before = segment(i + track_.segments.size() - 1).push.turn;
  const bool isChange = before != Turn::kNone && before != s.push.turn;
  const double step = isChange ? skill_.changeStep : skill_.entryStep;
  double speed = 5;
  while (speed < kNoLimit && driftThrough(s, speed + 0.5, step) <= skill_.drift) speed += 0.5;
  return speed;
}

double RoadBook::speedLimit(const Sight& sight) const {
  double limit = fastest_[sight.segment];
  double distance = segment(sight.segment).length - sight.lapPosition - kSlack;
  for (std::size_t i = sight.segment + 1; distance < kLookAhead; ++i) {
    const double there = fastest_[i % fastest_.size()];
    limit = std::min(limit, std::sqrt(there * there + 2 * skill_.slowing * std::max(0.0, distance)));
    distance += segment(i).length;
  }
  return limit;
}

double RoadBook::speedKept(const Sight& sight) const {
  const double limit = speedLimit(sight);
  return sight.speed > limit ? std::max(sight.speed - skill_.slowing, limit)
                             : std::min(sight.speed + kGain, limit);
}

double RoadBook::strictness(const Sight& sight) const {
  const Segment& here = segment(sight.segment);
  return here.atEnd && here.length - sight.lapPosition < kRunUp ? kStrict : 1;
}

double RoadBook::insideOf(Turn turn) const {
  return turn == Turn::kLeft ? skill_.inside : 100 - skill_.inside;
}

bool RoadBook::goesOn(std::size_t i) const {
  return segment(i).push.turn == segment(i + track_.segments.size() - 1).push.turn;
}

double RoadBook::line(const Sight& sight) const {
  const Segment& here = segment(sight.segment);
  if (here.atEnd) return kMiddle;
  if (here.push.turn == Turn::kNone) {
    const Turn next = segment(sight.segment + 1).push.turn;
    const bool isNear = here.length - sight.lapPosition < kLineUp;
    return isNear && next != Turn::kNone ? insideOf(next) : sight.lateralPosition;
  }
  // From the inside at the beginning of the whole turn to the outside at its end.
  double way = sight.lapPosition;
  double length = here.length;
  for (std::size_t i = sight.segment; goesOn(i); --i) {
    way += segment(i - 1).length;
    length += segment(i - 1).length;
    if (i == 1) break;
  }
  for (std::size_t i = sight.segment + 1; goesOn(i) && i < track_.segments.size(); ++i) {
    length += segment(i).length;
  }
  const double inside = insideOf(here.push.turn);
  const double outside = here.push.turn == Turn::kLeft ? skill_.outside : 100 - skill_.outside;
  return inside + (outside - inside) * std::clamp(way / length, 0.0, 1.0);
}

}  // namespace vorn
