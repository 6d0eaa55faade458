// The six engine tapes and the engine's start.

#include <array>
#include <cmath>

#include "engine_models.h"
#include "groups.h"
#include "synth/filter.h"
#include "synth/tones.h"

namespace vorn::sounds {
namespace {

using namespace synth;  // recipes are written in its words

constexpr double kIdleLufs = -24, kDrivingLufs = -21;
constexpr double kDrivingFrom = 10;  // percent of revolutions

/// The recipe leads the loudness itself; only the peak is held afterwards.
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

/// The starter turns the engine over for as long as `seconds`.
Signal starter(Noise& noise, double rate, double seconds) {
  constexpr double kCompressions = 9;  // a second
  const Contour strain = [](double now) { return 0.62 + 0.38 * std::cos(kTwoPi * kCompressions * now); };
  const Contour hertz = [strain](double now) { return 240 + 60 * (1 - strain(now)); };
  Signal motor = saw(rate, seconds, hertz, strain);
  motor = bandpass(motor, rate, 700, 0.6);
  const Contour gearHertz = [hertz](double now) { return 5.2 * hertz(now); };
  mixInto(motor, harmonics(rate, seconds, gearHertz, {1, 0.3}), 0.16);
  mixInto(motor, bandpass(white(noise, framesOf(rate, seconds)), rate, 1800, 0.7), 0.08);
  return shaped(std::move(motor), rate, swell(0.015, 0.06, seconds));
}

/// Cranking, the first firings, a flare of revolutions, then idle to the end:
/// the idle is cut over to the engine's tape, so it is as loud as that.
Audio engineStart(const Recording& recording) {
  constexpr double kCatches = 1.1, kFlare = 1.6, kSettled = 2.6, kIdleRevs = 5;
  const double rate = recording.rate();
  Noise noise = recording.noise("starter");
  const Contour revs{{kCatches, 4}, {kFlare, 45}, {kFlare + 0.25, 42}, {kSettled, kIdleRevs}};
  Signal engine = stockCar({rate, recording.frames(), revs, recording.noise("engine")});
  const Contour runs{{kCatches - 0.05, 0}, {kCatches + 0.1, 1}};
  Canvas canvas = recording.canvas();
  canvas.add(withPeak(shaped(std::move(engine), rate, runs), 1));
  canvas.add(0, withPeak(starter(noise, rate, kCatches + 0.1), 0.8));
  const Contour lufs{{0.1, -16.5}, {kCatches, -17.5}, {kFlare, -16}, {kFlare + 0.3, -17}, {kSettled, -23.2}};
  return leveled(canvas.signal(), static_cast<int>(rate), lufs);
}

constexpr std::array kRecipes{
    Recipe{"vorn1", "engine: V8 stock car", Play::kTape, kEngine, kFromZero, &tape<stockCar>},
    Recipe{
        "vorn2", "the engine is started", Play::kOnce, {-19, -6, Meter::kAsRendered}, {2, 150}, &engineStart},
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
