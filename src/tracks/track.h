/// A track is data: a sequence of segments, each with a length, a cue that
/// announces its end, and in a turn a push toward the outside. Pure.
#pragma once

#include <span>

#include "race/cue.h"
#include "state/game_state.h"

namespace vorn {

/// Which way a segment bends. A left turn pushes the car toward the right wall.
enum class Turn { kNone, kLeft, kRight };

/// What a segment does to the car each tick: in a turn it moves toward the
/// outside by fixed + speed / divisor, or as a rule of its own has it.
struct Push {
  Turn turn = Turn::kNone;
  double fixed = 0;                    ///< lateral units a tick, at any speed but 0
  double divisor = 1;                  ///< mph that make one lateral unit a tick
  void (*rule)(RaceState&) = nullptr;  ///< runs instead of the formula, at any speed
};

struct Segment;
/// What happens where a segment ends, before the change to the next one. May wait.
using EndRule = void (*)(GameState& g, const Segment& ended, const Segment& next);

struct Segment {
  double length;  ///< units; one tick at `speed` s covers s
  int cue;        ///< number of the cue's sound file
  double scale;   ///< how steeply the cue rises, hundredths of a decibel a percent of the way
  int pan;        ///< where the cue stands, hundredths of a decibel, negative: left
  Push push = {};
  double cueLength = 0;  ///< units over which the cue rises; 0: the segment's own length
  EndRule atEnd = nullptr;
};

struct Track {
  const char* name;     ///< as the player knows it
  const char* welcome;  ///< spoken, spelled for the voice
  double steerDrag;     ///< factor on the speed lost to steering
  std::span<const Segment> segments;
  void (*rule)(RaceState&) = nullptr;  ///< carried out once, before the race
};

/// How far `push` moves the car toward 100 at this speed, mph; negative: toward 0.
double lateralPush(const Push& push, double speed);
/// One tick of what the segment does to the car. A standing car is pushed by no formula.
void pushCar(RaceState& car, const Push& push);
/// The length over which a segment's cue rises, units.
double cueLength(const Segment& segment);
/// The cue that announces the end of a segment.
Cue segmentCue(const Segment& segment);
/// The length of a lap, units.
double lapLength(const Track& track);

}  // namespace vorn
