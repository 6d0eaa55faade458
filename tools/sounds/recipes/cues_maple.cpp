// The cues of the Maple Leaf and Painsville ovals.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn1t1", "gas can: glug-glug into tin, one clank", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t2", "bicycle bell dring-dring", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t3", "wooden cuckoo clock", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t4", "ducks quack-quack", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t5", "a woman stomping grapes, squelch and giggle", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t6", "jaw-harp boing", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t10", "a song: harmonica jingle (original)", Play::kLoop, kStraightCue, {}, &plainSound},
};

}  // namespace

std::span<const Recipe> mapleCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
