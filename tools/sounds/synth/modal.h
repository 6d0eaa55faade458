/// Struck things: bells, plates, wood, stones as banks of decaying partials.
#pragma once

#include <vector>

#include "noise.h"
#include "signal.h"

namespace vorn::synth {

struct Mode {
  double hertz;
  double amplitude;
  double decay;  ///< seconds to fall by 60 dB
};

/// One stroke. `attack` (seconds) is how soft the hammer is: 0.0003 hard steel,
/// 0.003 felt. Modes near half the rate are left out.
Signal strike(double rate, double seconds, const std::vector<Mode>& modes, double attack = 0.0003);

/// `modes` with every frequency times `pitch` and every decay times `length`.
std::vector<Mode> retuned(std::vector<Mode> modes, double pitch, double length = 1);

/// A dull hit: a sine that falls from `fromHertz` to `toHertz` and dies away.
Signal thump(double rate, double fromHertz, double toHertz, double decay);

/// A short burst of noise around `hertz`.
Signal burst(Noise& noise, double rate, double hertz, double quality, double attack, double decay);

}  // namespace vorn::synth
