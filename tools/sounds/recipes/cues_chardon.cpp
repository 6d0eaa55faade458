// The cues of the Chardon hill top.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn1t23", "yodel yo-de-lay", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t24", "hand bells down the scale", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t25", "sleigh bells", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t26", "sheep: ewe and lamb", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t27", "woodpecker, two bursts", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t28", "chair-lift clank-clank", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t29", "pan-pipe tune (original)", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t30", "kazoo brr-brr", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t31", "small church organ, four chords", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t32", "eagle screech", Play::kLoop, kTurnCue, {}, &plainSound},
};

}  // namespace

std::span<const Recipe> chardonCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
