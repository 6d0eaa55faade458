// Walls.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn16",
           "steady stadium roar, many voices, no single shouts or whistl",
           Play::kLoop,
           {-18, -4, Meter::kWhole},
           {},
           &plainSound},
    Recipe{"vorn23", "gusting wind", Play::kLoop, {-19, -4, Meter::kWhole}, {}, &plainSound},
    Recipe{"vorn24", "forest edge", Play::kLoop, {-20, -4, Meter::kWhole}, {}, &plainSound},
};

}  // namespace

std::span<const Recipe> wallRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
