/// Bowed strings on small wooden bodies.
#pragma once

#include "contour.h"
#include "noise.h"
#include "signal.h"

namespace vorn::synth {

/// One stroke of a fiddle's bow.
struct Stroke {
  double seconds;
  Contour hertz;
  double attack = 0.02, release = 0.03;  ///< seconds
  double vibrato = 0;                    ///< share of the pitch
};
Signal fiddle(Noise& noise, double rate, const Stroke& stroke);

}  // namespace vorn::synth
