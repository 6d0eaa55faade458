/// Skins that buzz with a voice.
#pragma once

#include "contour.h"
#include "noise.h"
#include "signal.h"

namespace vorn::synth {

/// A hum with a skin that rattles along.
Signal kazoo(Noise& noise, double rate, double seconds, const Contour& hertz, const Contour& loudness);

}  // namespace vorn::synth
