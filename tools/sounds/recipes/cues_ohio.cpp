// The cues of the Ohio Motor Speedway.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn1t7", "frogs ribbit-ribbit", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t8",
           "hammer on anvil, heavy stroke and lighter rebound",
           Play::kLoop,
           kEightBitCue,
           {},
           &plainSound},
    Recipe{
        "vorn1t9", "steam locomotive chuff, whistle at the end", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t11", "rooster crows", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t12", "slide whistle going up", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t13", "rubber duck squeak-squeak", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t14", "snare-drum march", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t15", "cow moo with cowbell", Play::kLoop, kTurnCue, {}, &plainSound},
};

}  // namespace

std::span<const Recipe> ohioCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
