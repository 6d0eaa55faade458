// The cues of the Erie lake front.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn1t33", "gulls laughing", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t34", "concertina hornpipe (original)", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t35", "bell buoy with lapping water", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t36", "swimmers: splashes and laughter", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t37", "ship's fog horn, two tones", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t38", "sonar ping with echoes", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t39", "waves and clinking halyards", Play::kLoop, kStraightCue, {}, &plainSound},
};

}  // namespace

std::span<const Recipe> erieCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
