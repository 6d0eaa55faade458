// Speech.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn12",
           "'Start your engine.' marshal's voice",
           Play::kOnce,
           {-15, -1.5, Meter::kWhole},
           {},
           &plainSound},
    Recipe{"vorn13", "'Gas, then shift up.'", Play::kOnce, {-15, -1.5, Meter::kWhole}, {}, &plainSound},
    Recipe{"vorn1t72",
           "'Pit road. Fifty miles an hour.'",
           Play::kLoop,
           {-15, -1.5, Meter::kWhole},
           {},
           &plainSound},
    Recipe{"vorn1t73",
           "'Your pit box in' 0.35 s, '5' 2.05, '4' 2.95, '3' 3.85, '2' ",
           Play::kOnce,
           {-14, -1.5, Meter::kWhole},
           {},
           &plainSound},
};

}  // namespace

std::span<const Recipe> speechRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
