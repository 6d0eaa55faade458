/// Figures by which a sound is judged before anybody hears it. Each is an estimate of
/// our own, stated with it; they compare sounds with each other, not with a laboratory. Pure.
#pragma once

#include "synth/signal.h"

namespace vorn::hearing {

using synth::Signal;

struct Figures {
  /// How deeply the loudness trembles 20 to 300 times a second, as an ear hears it within its critical
  /// bands: the root mean square of each band's envelope in that range over its mean, bands weighted
  /// by power. A tone has 0, noise 0.3 to 0.5; recorded engines 0.10 to 0.46, half of them 0.19 to 0.39.
  double roughness;
  /// Share of all power that the strongest tone has, as a fifth of a second at a time shows it.
  double strongestLine;
  /// How much the level of 25 ms moves within critical bands: deviation over mean, bands
  /// weighted by power. Plain noise has 0.2 (white) to 0.4 (low).
  double envelopeVariation;
  /// Share of all power above 1.5 kHz, where two ears tell a side at once.
  double sideEnergy;
  /// After DIN 45692, from specific loudness as the fourth root of a critical band's power: about 1.3
  /// for a noise an eighth of an octave wide at 1 kHz, more is sharper.
  double sharpness;
};

/// Of a loop at `rate`, which is heard round and round; at least a fifth of a second.
Figures figuresOf(const Signal& loop, double rate);

/// `loop` without its pauses: stretches of 20 ms that are 35 dB and more below the loudest are taken out.
Signal withoutSilence(const Signal& loop, double rate);

}  // namespace vorn::hearing
