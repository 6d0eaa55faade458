// Crash.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn11", "tumbling body", Play::kOnce, {-13, -1, Meter::kLoudestMoment}, {}, &plainSound},
    Recipe{"vorn15", "one huge hit", Play::kOnce, {-9, -0.8, Meter::kLoudestMoment}, {}, &plainSound},
    Recipe{"vorn20", "wooden ramp", Play::kOnce, {-14, -1.5, Meter::kLoudestMoment}, {}, &plainSound},
    Recipe{"vorn21",
           "heavy slam, suspension double bounce, dust",
           Play::kOnce,
           {-12, -1, Meter::kLoudestMoment},
           {},
           &plainSound},
    Recipe{"vorn22",
           "big splash, then bubbles and a duck's comment at 2.0 s",
           Play::kOnce,
           {-13, -1, Meter::kLoudestMoment},
           {},
           &plainSound},
};

}  // namespace

std::span<const Recipe> crashRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
