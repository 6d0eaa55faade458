/// The six engines as models that follow a course of revolutions, and the law
/// of the tapes they are recorded on.
#pragma once

#include <span>
#include <string_view>

#include "synth/contour.h"
#include "synth/noise.h"
#include "synth/signal.h"

namespace vorn::sounds {

/// One engine's tape. The game plays revolutions of r percent from byte
/// `step` x r and lets the tape run for a tick, about 100 ms.
struct EngineTape {
  std::string_view name;
  int step;          ///< bytes a percent
  double idleHertz;  ///< pitch at rest; a whole number of periods in 0.2 s
  double ratio;      ///< pitch at full revolutions over the pitch at rest
};

std::span<const EngineTape> engineTapes();
const EngineTape& engineTape(std::string_view name);

/// Below this many percent the tape idles, above the other it is at full revolutions.
constexpr double kIdleUpTo = 3;
constexpr double kFullFrom = 100;

/// Percent of revolutions recorded at `seconds` of the tape.
double revsAt(const EngineTape& tape, double seconds);
/// The pitch that belongs to `revs` percent: equal ratios for equal steps.
double pitchAt(const EngineTape& tape, double revs);

/// An engine running along `revs` (percent as a function of seconds).
struct Run {
  double rate;
  int frames;
  synth::Contour revs;
  synth::Noise noise;
};

synth::Signal stockCar(Run run);     ///< cross-plane V8
synth::Signal racingTen(Run run);    ///< smooth howl
synth::Signal rallyFour(Run run);    ///< buzzy, honking intake
synth::Signal dieselTruck(Run run);  ///< knock and whistle
synth::Signal twoStroke(Run run);    ///< rasp of an expansion chamber
synth::Signal turbine(Run run);      ///< gear whine and air, no firing

}  // namespace vorn::sounds
