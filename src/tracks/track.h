/// A track is data: a sequence of segments, each with a length, a cue that
/// announces it, and in a turn a push toward the outside. Pure.
#pragma once

#include <span>
#include <string_view>

#include "state/game_state.h"

namespace vorn {

/// Which way a segment pushes the car. A left turn pushes toward the right wall.
enum class Turn { kNone, kLeft, kRight };

/// What a turn does to the car each tick: it moves toward the outside by
/// fixed + speed / divisor.
struct Push {
  Turn turn = Turn::kNone;
  double fixed = 0;
  double divisor = 1;
};

/// A rule of its own for a track's segment; runs instead of the push.
using SegmentRule = void (*)(GameState& g);
/// A rule at the end of a segment, before the next one begins.
using EndRule = void (*)(GameState& g);

struct Segment {
  double length;  ///< units; one tick at `speed` s covers s
  int cue;        ///< number of the cue's sound file
  double scale;   ///< how steeply the cue rises, hundredths of a decibel a percent of the way
  int pan;        ///< where the cue stands, hundredths of a decibel, negative: left
  Push push = {};
  double cueLength = 0;  ///< length over which the cue rises; 0: the segment's own
  SegmentRule rule = nullptr;
  EndRule endRule = nullptr;
};

struct Track {
  const char* welcome;
  double steerDrag;  ///< factor on the speed lost to steering
  std::span<const Segment> segments;
  bool topGearUnlimited = false;
};

/// How far `push` moves the car toward 100 at this speed, mph.
double lateralPush(const Push& push, double speed);

}  // namespace vorn
