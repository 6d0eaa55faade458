// Cockpit.

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn3",
           "tyre chirp and burn-out squeal with a bark of exhaust",
           Play::kOnce,
           {-17, -4, Meter::kLoudestMoment},
           {},
           &plainSound},
    Recipe{"vorn4",
           "three-tone truck air horn, instant attack",
           Play::kOnce,
           {-11, -1, Meter::kLoudestMoment},
           {},
           &plainSound},
    Recipe{"vorn5",
           "referee whistle cut by a descending 'wah-wah' buzzer",
           Play::kOnce,
           {-14, -2, Meter::kLoudestMoment},
           {},
           &plainSound},
    Recipe{"vorn6",
           "bright brass bell, one stroke",
           Play::kOnce,
           {-15, -2, Meter::kLoudestMoment},
           {},
           &plainSound},
    Recipe{"vorn7",
           "original 9-note two-trumpet car-horn tune",
           Play::kOnce,
           {-15, -2, Meter::kWhole},
           {},
           &plainSound},
    Recipe{"vorn8", "byte 1000", Play::kTape, {-20, -6, Meter::kWhole}, {}, &plainSound},
    Recipe{"vorn9",
           "continuous tyre scrub/squeal, no events",
           Play::kLoop,
           {-20, -6, Meter::kWhole},
           {},
           &plainSound},
    Recipe{"vorn10",
           "metal on concrete, gritty, sparks",
           Play::kLoop,
           {-15, -2, Meter::kWhole},
           {},
           &plainSound},
    Recipe{"vorn14",
           "one crisp wrench clink, higher than vorn6",
           Play::kOnce,
           {-15, -2, Meter::kLoudestMoment},
           {},
           &plainSound},
    Recipe{"vorn17", "'ba-dump'", Play::kOnce, {-16, -2, Meter::kLoudestMoment}, {}, &plainSound},
    Recipe{"vorn18",
           "irregular rubbery bumps over gravel, 13 per loop in uneven s",
           Play::kLoop,
           {-18, -3, Meter::kWhole},
           {},
           &plainSound},
    Recipe{
        "vorn19", "dry lever clunk, 28 ms", Play::kOnce, {-20, -3, Meter::kLoudestMoment}, {}, &plainSound},
    Recipe{"vorn29",
           "short whoosh with a hollow 'whup' at 0.18 s",
           Play::kOnce,
           {-17, -3, Meter::kLoudestMoment},
           {},
           &plainSound},
};

}  // namespace

std::span<const Recipe> cockpitRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
