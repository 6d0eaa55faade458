/// The rules of pit road in figures. Pure.
#pragma once

#include <optional>
#include <string>

#include "state/race_state.h"

namespace vorn {

/// The last `lapPosition` from which the pit entry can still be taken.
inline constexpr double kLastPitEntry = 2500;

/// One side of the track as a pit road uses it; the other side is its mirror
/// image. Lateral places 0..100, pans in hundredths of a decibel.
struct PitSide {
  int inward;         ///< +1: away from the pit wall is toward 100; -1: toward 0
  double laneEntry;   ///< where the lane begins for a car at the start of the lap
  double boxEdge;     ///< a car further inward than this has stopped outside its box
  double exitPlace;   ///< where the way out begins
  double trackPlace;  ///< where the car is back on the track

  /// A pan of this size on the side of the pit wall.
  constexpr int panOutward(int size) const { return -inward * size; }
  constexpr int panInward(int size) const { return inward * size; }
};

/// Side 1 lies on the left, side 2 on the right.
const PitSide& pitSide(int side);

/// Where a car that asks at this `lapPosition` finds itself in the lane.
double lanePlace(const PitSide& side, double lapPosition);
/// One tick of the lane: it bends away from the pit wall, more so along its way. Nothing for a standing car.
void driftInLane(RaceState& car, const PitSide& side);
/// How fast the pit box voice is played to a car at this speed (mph), hertz.
double boxVoiceFrequency(double speed);
/// Faster than this is an offence, mph.
bool isSpeeding(double speed);

/// How a car has come to its pit box.
struct PitArrival {
  double lapPosition = 0;          ///< units since the approach began
  double lateralPosition = 50;     ///< 0..100
  std::optional<double> speeding;  ///< the last speed above the limit, mph
};

/// What is said of an arrival and what it costs.
struct PitVerdict {
  std::string message;  ///< a sentence a fault, in one text; empty: a clean stop
  double ticks = 0;     ///< race ticks; 9.8 make a second
};

PitVerdict judge(const PitArrival& arrival, const PitSide& side);

}  // namespace vorn
