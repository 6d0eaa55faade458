// The six engine tapes and the engine's start.

#include <array>

#include "engine_models.h"
#include "groups.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

using namespace synth;  // recipes are written in its words

constexpr double kIdleLufs = -24, kDrivingLufs = -21;
constexpr double kDrivingFrom = 10;  // percent of revolutions

// The recipe leads the loudness itself; only the peak is held afterwards.
constexpr Level kEngine{kDrivingLufs, -8, Meter::kAsRendered};
constexpr Edges kFromZero{1, 0};

using Engine = Signal (*)(Run);

template <Engine engine>
Audio tape(const Recording& recording) {
  const EngineTape& law = engineTape(recording.name());
  const auto revs = [&law](double seconds) { return revsAt(law, seconds); };
  const Signal sound = engine({recording.rate(), recording.frames(), revs, recording.noise("engine")});
  const Contour rise{{kIdleUpTo, kIdleLufs}, {kDrivingFrom, kDrivingLufs}};
  return leveled(sound, static_cast<int>(recording.rate()),
                 [&](double seconds) { return rise(revsAt(law, seconds)); });
}

constexpr std::array kRecipes{
    Recipe{"vorn1", "engine: V8 stock car", Play::kTape, kEngine, kFromZero, &tape<stockCar>},
    Recipe{"vorn2", "the engine is started", Play::kOnce, {-19, -6}, {0, 150}, &plainSound},
    Recipe{"vorn30", "engine: racing ten cylinders, a howl", Play::kTape, kEngine, kFromZero,
           &tape<racingTen>},
    Recipe{"vorn31", "engine: rally four, buzzy", Play::kTape, kEngine, kFromZero, &tape<rallyFour>},
    Recipe{"vorn32", "engine: diesel truck", Play::kTape, kEngine, kFromZero, &tape<dieselTruck>},
    Recipe{"vorn33", "engine: two-stroke", Play::kTape, kEngine, kFromZero, &tape<twoStroke>},
    Recipe{"vorn34", "engine: turbine", Play::kTape, kEngine, kFromZero, &tape<turbine>},
};

}  // namespace

std::span<const Recipe> engineRecipes() {
  return kRecipes;
}

}  // namespace vorn::sounds
