// Engines.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn1",
           "cross-plane V8 burble, 44 -> 440 Hz firing, loping idle",
           Play::kTape,
           {-21, -8, Meter::kWhole},
           {},
           &plainSound},
    Recipe{"vorn2",
           "0-1.1 s starter motor whine with compression throbs 9/s, 1.1",
           Play::kOnce,
           {-19, -6, Meter::kWhole},
           {},
           &plainSound},
    Recipe{"vorn30", "smooth howl, 75 -> 900 Hz", Play::kTape, {-21, -8, Meter::kWhole}, {}, &plainSound},
    Recipe{
        "vorn31", "buzzy, 75 -> 240 Hz, intake honk", Play::kTape, {-21, -8, Meter::kWhole}, {}, &plainSound},
    Recipe{"vorn32",
           "clatter knock, 40 -> 100 Hz, turbo whistle 1.1 -> 2.6 kHz at",
           Play::kTape,
           {-21, -8, Meter::kWhole},
           {},
           &plainSound},
    Recipe{"vorn33", "ring-ding rasp, 80 -> 560 Hz", Play::kTape, {-21, -8, Meter::kWhole}, {}, &plainSound},
    Recipe{"vorn34",
           "gear whine 180 -> 1500 Hz with its 1.5x partial, airy hiss, ",
           Play::kTape,
           {-21, -8, Meter::kWhole},
           {},
           &plainSound},
};

}  // namespace

std::span<const Recipe> engineRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
