#include "reeds.h"

#include <cmath>

#include "filter.h"
#include "tones.h"

namespace vorn::synth {

Signal kazoo(Noise& noise, double rate, double seconds, const Contour& hertz, const Contour& loudness) {
  Signal hum = harmonics(rate, seconds, hertz, falling(30, -5));
  // The skin follows the hum until it hits its frame: hard edges, and it rasps.
  for (double& value : hum) value = std::tanh(3.5 * value) + 0.25 * std::abs(value) + 0.05 * noise.next();
  hum = highpass(hum, rate, 450);
  Signal sound = bandpass(hum, rate, 1050, 2);
  mixInto(sound, bandpass(hum, rate, 2300, 2.5), 1.5);
  mixInto(sound, bandpass(hum, rate, 3700, 3), 1.1);
  return shaped(std::move(sound), rate, loudness);
}

}  // namespace vorn::synth
