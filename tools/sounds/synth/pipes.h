/// Pipes and whistles: air that breaks on an edge. They speak with a chiff and
/// keep a breath of noise.
#pragma once

#include <vector>

#include "contour.h"
#include "noise.h"
#include "signal.h"

namespace vorn::synth {

struct Pipe {
  double seconds;
  Contour hertz;
  std::vector<double> partials{1, 0.5, 0.25, 0.12, 0.06};
  double chiff = 0.3;    ///< strength of the air before the tone stands
  double breath = 0.03;  ///< air in the standing tone
  double attack = 0.03;  ///< seconds
  double release = 0.06;
  double vibrato = 0;  ///< share of the pitch
  double vibratoHertz = 5;
};

Signal pipe(Noise& noise, double rate, const Pipe& pipe);

/// Partials of a few voices of an organ.
std::vector<double> stoppedWood();  ///< hollow: odd partials
std::vector<double> fairground();   ///< loud and bright

}  // namespace vorn::synth
