/// Strings, plucked and bowed, on small wooden bodies.
#pragma once

#include "contour.h"
#include "noise.h"
#include "signal.h"

namespace vorn::synth {

/// A plucked string that rings `decay` seconds at its lowest partial; `place`
/// (0..0.5 of its length) is where the finger was: near the end it twangs.
Signal pluckedString(double rate, double hertz, double decay, double place);

/// A banjo's string on its drum of skin.
Signal banjo(double rate, double hertz, double seconds);

/// One stroke of a fiddle's bow.
struct Stroke {
  double seconds;
  Contour hertz;
  double attack = 0.02, release = 0.03;  ///< seconds
  double vibrato = 0;                    ///< share of the pitch
};
Signal fiddle(Noise& noise, double rate, const Stroke& stroke);

}  // namespace vorn::synth
