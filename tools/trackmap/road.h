/// What there is to say of a track's segments: figures that the tables imply. Pure.
#pragma once

#include <array>
#include <string>

#include "tracks/track.h"

namespace vorn::trackmap {

/// Speeds at which pushes are shown, mph.
inline constexpr std::array<double, 3> kSpeeds = {60, 120, 180};
/// What a full turn of the wheel moves the car in a tick.
inline constexpr double kFullLock = 6.67;

/// How far a segment moves a car in the middle of the road in a tick, without its direction.
double sharpness(const Segment& segment, double speed);
/// The highest speed at which the wheel still holds the car against the push, mph; 0 where there is none.
double heldUpTo(const Segment& segment);

/// A number with so many decimals.
std::string number(double value, int decimals = 0);
/// "straight", "left turn", "banked left turn", "straight, ends at the jump".
std::string kindOf(const Segment& segment);
/// "gas can, left": the cue and where it stands.
std::string cueOf(const Segment& segment);
/// The word by which a track's picture is called: "maple".
std::string fileWord(const Track& track);

}  // namespace vorn::trackmap
