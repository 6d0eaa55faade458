/// Played instruments of the synthesis toolkit, one note or stroke at a time,
/// and its rooms. Their noise comes from the C library's `rand`, so a note is
/// the same again only with the same seed. The toolkit keeps its sampling rate
/// for the whole process: `tuneToolkit` first.
#pragma once

#include "filter.h"
#include "noise.h"
#include "signal.h"

namespace vorn::synth {

/// Sets the toolkit's sampling rate.
void tuneToolkit(double rate);

struct Note {
  double hertz;
  double seconds;      ///< until the player lets go
  double ring = 0.3;   ///< seconds kept after that
  double force = 0.8;  ///< 0..1
};

/// A bright string.
Signal plucked(Noise& noise, double rate, const Note& note);

/// Things shaken. `energy` 0..1 at the first moment of the stroke.
enum class Shaker { kTambourine = 3, kSleighBells = 4 };  // as the toolkit numbers them
Signal shaken(Noise& noise, double rate, Shaker kind, double energy, double seconds);

/// `signal` in a room that rings for `ringing` seconds; `share` of it, 0..1.
Signal inRoom(const Signal& signal, double rate, double ringing, double share, Ends ends = Ends::kOpen);

}  // namespace vorn::synth
