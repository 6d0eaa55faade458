/// When a turn is called, and how the call sounds. Pure.
#pragma once

#include <optional>
#include <vector>

#include "codriver/tones.h"
#include "platform/platform.h"
#include "state/game_state.h"
#include "tracks/track.h"

namespace vorn {

/// What is called: a stretch of segments that push alike, or the run up to a jump.
struct CalledTurn {
  std::size_t first = 0;    ///< its first segment, from 0
  double start = 0;         ///< units of the lap at which it begins
  double length = 0;        ///< units
  Turn turn = Turn::kNone;  ///< kNone: a jump
};

/// The turns of a lap, in their order.
std::vector<CalledTurn> turnsOf(const Track& track);

/// How far the push of a segment moves a car in the middle of the road in a tick, lateral units, 0 and up.
double pushAt(const Segment& segment, double speed);

// --- When

/// Milliseconds of a car tick.
inline constexpr double kTickMs = 99;

/// The soonest time, in ms, in which `car` can cover `distance`, with full gas and
/// in every gear; infinite where that is far ahead.
double soonestMs(const RaceState& car, double distance);

// --- How

/// Hertz for a push in lateral units a tick; the same on every track.
int pitchOfPush(double push);
/// Lateral units a tick of a call's pitch: what a driver reads from it.
double pushOfPitch(int pitch);
/// Milliseconds of each of the two tones for a turn of this length.
int toneMs(double length);
/// Units of the turn that tones of so many milliseconds tell of.
double lengthOfTone(int milliseconds);

/// The call of a turn that pushes by `push`.
std::vector<Beep> turnCall(const CalledTurn& turn, double push);
/// How long a figure sounds, ms.
int figureMs(const std::vector<Beep>& beeps);

// --- For keys

/// Ticks before the joint at which a steering key has to go down for a car at `lateralPosition` to stay off
/// the marbles in `turn` at this speed: 0 .. `kLongestKeyLead`; as many as the inside allows where none are
/// enough.
int keyLead(const Segment& turn, double speed, double lateralPosition);
inline constexpr int kLongestKeyLead = 24;
/// "Steer now".
std::vector<Beep> steerCall(Turn turn);

}  // namespace vorn
