/// The air around a loop.
#pragma once

#include "canvas.h"

namespace vorn::synth {

/// The canvas in a room that rings for `ringing` seconds, `share` (0..1) of it
/// heard. What rings over the end is heard at the start.
Signal inRoom(const Canvas& canvas, double ringing, double share);

/// The canvas with `count` echoes, each `delay` seconds later and `decibels`
/// (negative) quieter, round the loop.
Signal withEchoes(const Canvas& canvas, double delay, double decibels, int count);

}  // namespace vorn::synth
