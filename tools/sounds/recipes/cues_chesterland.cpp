// The cues of the Chesterland dirt road.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn1t65", "donkey hee-haw", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t66", "turkeys gobble", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t67", "creaking hand pump with water gush", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t68", "pigs: oink and squeal", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t69", "jug and spoons", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t70", "hens clucking, one announces an egg", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t71", "coyote howl over crickets", Play::kLoop, kTurnCue, {}, &plainSound},
};

}  // namespace

std::span<const Recipe> chesterlandCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
