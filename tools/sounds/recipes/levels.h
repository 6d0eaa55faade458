/// How loud each role is, so that the mix of a race stays readable: the engine
/// is always there, the cues stand above it, walls and tyres below.
#pragma once

#include "recipe.h"

namespace vorn::sounds {

constexpr Level kStraightCue{-16, -2};
constexpr Level kTurnCue{-17, -2};
constexpr Level kSharedCue{-16.5, -2};  ///< a straight on one track, a turn on another
constexpr Level kEightBitCue{-17, -3.9};

}  // namespace vorn::sounds
