// The cues of the Kirtland dirt mile.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn1t53", "banjo and washboard two-step", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t54", "horses galloping", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t55", "horse whinny", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t56", "mouth-organ train wail", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t57", "fiddle reel (original)", Play::kLoop, kSharedCue, {}, &plainSound},
    Recipe{"vorn1t58", "dinner triangle roll, one yee-haw", Play::kLoop, kTurnCue, {}, &plainSound},
};

}  // namespace

std::span<const Recipe> kirtlandCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
