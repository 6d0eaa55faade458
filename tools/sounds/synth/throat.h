/// Living voices: a throat whose pulses tremble and growl, through a mouth that
/// moves from shape to shape. For laughs, bleats, crows and brays.
#pragma once

#include <vector>

#include "contour.h"
#include "noise.h"
#include "signal.h"
#include "voice.h"

namespace vorn::synth {

/// The shape of the mouth at a moment of the cry.
struct MouthAt {
  double seconds;
  Mouth mouth;
};

struct Cry {
  double seconds;
  Contour hertz;  ///< pitch of the throat
  Contour loudness = 1.0;
  std::vector<MouthAt> mouths{{0, kAh}};  ///< in order of time; it glides from one to the next
  Contour air = 0.02;                     ///< share of noise in the throat, 0..1
  Contour growl = 0.0;                    ///< how far every second pulse is from its neighbours, 0..1
  double tremble = 0.01;                  ///< random share by which each period strays
  double tilt = -9;                       ///< the throat's fall in dB an octave
};

Signal cry(Noise& noise, double rate, const Cry& cry);

/// A mouth of four formants with the usual bandwidths, for animals.
Mouth muzzle(double first, double second, double third, double fourth, double secondDb = -3,
             double thirdDb = -6, double fourthDb = -12);

/// A laugh: `count` syllables, `spacing` seconds apart, that fall from `fromHertz`
/// to `toHertz` and grow quieter.
struct Laugh {
  int count;
  double spacing;
  double fromHertz, toHertz;
  Mouth mouth = kAh;
};
Signal laugh(Noise& noise, double rate, const Laugh& laugh);

}  // namespace vorn::synth
