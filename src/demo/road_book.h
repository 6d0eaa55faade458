/// A track as a driver has learnt it: what the road will do to the car, how fast
/// each turn can be taken, and where across the road to be. Knows the segment
/// tables, sees nothing of the game but its ticks. Pure.
#pragma once

#include <vector>

#include "platform/platform.h"
#include "tracks/track.h"

namespace vorn {

/// The car as it stands before a tick.
struct Sight {
  std::size_t segment = 0;  ///< counts from 0
  double lapPosition = 0;
  double lateralPosition = 50;
  double speed = 0;
  int gear = 0;
};

/// What a driver with his device can do. Steps are lateral units a tick.
struct Skill {
  double entryStep;   ///< that stands ready against the push where a turn begins after a straight
  double changeStep;  ///< the same after a turn the other way
  double buildUp;     ///< by which the step grows a tick while it is held
  double topStep;
  double drift;         ///< lateral units that the push may win before the step is a match for it
  double slowing;       ///< mph a tick that the speed can be brought down by, on average
  double jumpSpeed;     ///< mph at which the swimming hole is jumped
  double inside = 15;   ///< where a left turn is begun; a right one at 100 less this
  double outside = 75;  ///< where a left turn is ended
};

class RoadBook {
 public:
  RoadBook(const Track& track, const Skill& skill);

  /// Where the tick after `tick` begins.
  Sight sightAfter(const TickReport& tick) const;
  /// The car once the road has pushed it and it has moved on, nobody steering.
  Sight pushed(Sight sight) const;
  /// The car at the end of a tick in which it is steered by `step`.
  Sight steered(const Sight& sight, double step) const;

  /// mph the car should not exceed here, with what lies ahead in mind.
  double speedLimit(const Sight& sight) const;
  /// The speed of the next tick of a car that is driven by that.
  double speedKept(const Sight& sight) const;
  /// Where across the road the car should be.
  double line(const Sight& sight) const;
  /// How much it matters to be there: 1, and more where the road leaves no choice.
  double strictness(const Sight& sight) const;
  /// The push of the coming tick, toward 100.
  double push(const Sight& sight) const;
  Turn turn(const Sight& sight) const { return segment(sight.segment).push.turn; }

 private:
  const Segment& segment(std::size_t i) const { return track_.segments[i % track_.segments.size()]; }
  double fastest(std::size_t i) const;
  double driftThrough(const Segment& s, double speed, double step) const;
  double insideOf(Turn turn) const;
  /// Whether segment `i` goes on in the turn of the one before it.
  bool goesOn(std::size_t i) const;

  const Track& track_;
  Skill skill_;
  std::vector<double> fastest_;  ///< mph, a segment each
};

}  // namespace vorn
