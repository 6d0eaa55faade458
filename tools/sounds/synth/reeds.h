/// Reeds: metal tongues that beat in a stream of air (mouth organ, concertina,
/// accordion) and skins that buzz (kazoo).
#pragma once

#include "contour.h"
#include "noise.h"
#include "signal.h"

namespace vorn::synth {

struct Reed {
  double seconds;
  Contour hertz;
  double beating = 0;     ///< hertz between the two tongues of a pair; 0: one tongue
  double bright = 0.5;    ///< 0 dull .. 1 piercing
  double attack = 0.025;  ///< seconds until it speaks
  double release = 0.05;  ///< seconds
  double tremolo = 0;     ///< depth, 0..1
  double tremoloHertz = 5;
};

Signal reed(Noise& noise, double rate, const Reed& reed);

/// A hum with a skin that rattles along.
Signal kazoo(Noise& noise, double rate, double seconds, const Contour& hertz, const Contour& loudness);

}  // namespace vorn::synth
