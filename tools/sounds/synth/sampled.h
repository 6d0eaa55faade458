/// Instruments that were recorded by somebody else, note by note: those of FluidR3 GM, a free
/// set (MIT licence), played offline by FluidSynth. For tunes: what one blows, bows and squeezes
/// is more alive so than from formulas.
#pragma once

#include <memory>

#include "contour.h"
#include "signal.h"

namespace vorn::synth {

/// As General MIDI numbers them, from 0.
enum class Sampled {
  kTubularBells = 14,
  kChurchOrgan = 19,
  kAccordion = 21,
  kHarmonica = 22,
  kTangoAccordion = 23,
  kBanjo = 105,
  kFiddle = 110
};

struct SampledNote {
  double hertz;
  double seconds;      ///< until the player lets go
  double ring = 0.3;   ///< seconds kept after that
  double force = 0.8;  ///< 0..1
  Contour bend = 0.0;  ///< semitones, -2 .. 2
};

class SampledInstrument {
 public:
  /// Throws `std::runtime_error` when the set is not there.
  SampledInstrument(double rate, Sampled instrument);
  ~SampledInstrument();
  SampledInstrument(const SampledInstrument&) = delete;
  SampledInstrument& operator=(const SampledInstrument&) = delete;

  /// The same note is the same again, whatever was played before.
  Signal play(const SampledNote& note);

 private:
  struct Player;
  double rate_;
  std::unique_ptr<Player> player_;
};

}  // namespace vorn::synth
