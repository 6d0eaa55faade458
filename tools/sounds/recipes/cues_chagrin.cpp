// The cues of the Chagrin River Speedway.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{
        "vorn1t16", "paddle steamer: wheel slaps, two-note whistle", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t17", "loon calling", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t18", "xylophone run up and down", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t19", "hail on a tin roof", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t20", "kookaburra laughing", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t21", "church bells, three-bell peal", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t22", "fishing reel ratchet, then plop", Play::kLoop, kTurnCue, {}, &plainSound},
};

}  // namespace

std::span<const Recipe> chagrinCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
