// Title.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

Audio title(const Recording& recording) {
  const Signal both = plainSound(recording).channels.front();
  return {both, both};
}

constexpr std::array kRecipes{
    Recipe{"vorn0", "stereo", Play::kOnce, {-16, -1.5, Meter::kWhole}, {}, &title},
};

}  // namespace

std::span<const Recipe> titleRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
