// The cues of the Geneva fair ground.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn1t59", "carousel organ polka, cymbal", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t60", "roller-coaster chain, scream at the end", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t61", "musette accordion with tambourine", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t62", "popcorn popping", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t63", "high striker: thump, rise, ding", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t64", "theremin", Play::kLoop, kTurnCue, {}, &plainSound},
};

}  // namespace

std::span<const Recipe> genevaCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
