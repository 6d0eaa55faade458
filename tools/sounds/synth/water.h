/// Water and wet things: bubbles, drops, splashes, squelches.
#pragma once

#include "noise.h"
#include "signal.h"

namespace vorn::synth {

/// A bubble of air that closes under water: a sine that rises from `hertz` by
/// `rise` (share of it a second) and dies the sooner the smaller it is.
Signal bubble(double rate, double hertz, double rise = 2);

/// `count` bubbles between two pitches within `seconds`, thick at the start.
Signal bubbles(Noise& noise, double rate, int count, double lowHertz, double highHertz, double seconds);

/// Something lands in water. `size` 1 is a swimmer, 0.2 a pebble.
Signal splash(Noise& noise, double rate, double size);

/// A foot in something soft: wet noise sucked in and out.
Signal squelch(Noise& noise, double rate, double seconds);

/// A gulp of air into a vessel that resonates between two pitches.
Signal glug(Noise& noise, double rate, double seconds, double lowHertz, double highHertz);

}  // namespace vorn::synth
