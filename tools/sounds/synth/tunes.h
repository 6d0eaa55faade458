/// Written music: notes on beats, played round a loop.
#pragma once

#include <functional>
#include <span>

#include "canvas.h"

namespace vorn::synth {

struct Written {
  double beat;   ///< when, from 0
  double beats;  ///< how long
  double note;   ///< semitones above A4 = 440 Hz
  double loud = 1;
};

/// A note's sound. `hertz`, then how long it is held.
using Player = std::function<Signal(double hertz, double seconds)>;

/// Plays `notes` so that `beats` fill `canvas` exactly, `lead` seconds late.
void play(Canvas& canvas, std::span<const Written> notes, double beats, const Player& player,
          double lead = 0.02);

}  // namespace vorn::synth
