#include "strings.h"

#include <array>

#include "filter.h"
#include "tones.h"

namespace vorn::synth {

Signal fiddle(Noise& noise, double rate, const Stroke& stroke) {
  const Contour pitch = vibrato(stroke.hertz, 5.8, stroke.vibrato);
  const Contour bowing = swell(stroke.attack, stroke.release, stroke.seconds);
  Signal string = saw(rate, stroke.seconds, pitch, bowing);
  // The hair lets go in time with the string, and grates.
  const Signal hair = bandpass(white(noise, static_cast<int>(string.size())), rate, 3200, 0.7);
  mixInto(string, shaped(hair, rate, bowing), 0.12);
  struct Body {
    double hertz, quality, gain;
  };
  constexpr std::array kBody{Body{290, 6, 0.35}, Body{470, 7, 0.5},  Body{700, 6, 0.45},   Body{1100, 5, 0.5},
                             Body{1700, 3, 0.5}, Body{2700, 2, 1.0}, Body{4100, 2.5, 0.45}};
  Signal sound = string;
  scale(sound, 0.12);
  for (const Body& body : kBody) mixInto(sound, bandpass(string, rate, body.hertz, body.quality), body.gain);
  return sound;
}

}  // namespace vorn::synth
