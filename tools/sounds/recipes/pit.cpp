// Pit.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn25",
           "petrol rushing through a hose with pump throb",
           Play::kLoop,
           {-21, -6, Meter::kWhole},
           {},
           &plainSound},
    Recipe{"vorn26", "air gun", Play::kOnce, {-17, -2, Meter::kWhole}, {}, &plainSound},
    Recipe{"vorn27",
           "wheel thud, 5 nuts tightened with falling pitch, jack drop",
           Play::kOnce,
           {-17, -2, Meter::kWhole},
           {},
           &plainSound},
    Recipe{"vorn28", "gate chime", Play::kOnce, {-16, -2, Meter::kLoudestMoment}, {}, &plainSound},
};

}  // namespace

std::span<const Recipe> pitRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
