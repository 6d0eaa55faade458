/// Voices of people and animals: a throat (a pulse train or noise) through a
/// mouth (four formants).
#pragma once

#include <array>

#include "contour.h"
#include "noise.h"
#include "signal.h"

namespace vorn::synth {

struct Formant {
  double hertz;
  double bandwidth;  ///< hertz
  double decibels;
};
using Mouth = std::array<Formant, 4>;

constexpr Mouth kAh{{{730, 90, 0}, {1090, 110, -4}, {2440, 170, -14}, {3400, 250, -20}}};
constexpr Mouth kEh{{{530, 70, 0}, {1840, 120, -8}, {2480, 170, -12}, {3500, 250, -20}}};
constexpr Mouth kEe{{{280, 60, 0}, {2250, 120, -10}, {2900, 180, -12}, {3700, 250, -18}}};
constexpr Mouth kOh{{{480, 70, 0}, {900, 90, -7}, {2450, 170, -22}, {3300, 250, -26}}};
constexpr Mouth kOo{{{320, 60, 0}, {800, 90, -12}, {2300, 170, -26}, {3200, 250, -30}}};

/// Every formant times `factor`: below 1 a large animal, above 1 a child.
Mouth sized(Mouth mouth, double factor);

struct Call {
  double seconds;
  Contour hertz;  ///< pitch of the throat
  Contour amplitude = 1.0;
  Mouth from = kAh, to = kAh;
  Contour opening = 0.0;   ///< 0: mouth `from`, 1: mouth `to`
  Contour breath = 0.02;   ///< share of noise in the throat, 0..1
  double roughness = 0;    ///< depth of a flutter of the throat, 0..1
  double roughHertz = 30;  ///< its speed
  double tilt = -9;        ///< throat's fall in dB an octave
};

/// One call or syllable.
Signal voiced(Noise& noise, double rate, const Call& call);

}  // namespace vorn::synth
