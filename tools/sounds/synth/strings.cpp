#include "strings.h"

#include <array>
#include <cmath>

#include "filter.h"
#include "modal.h"
#include "tones.h"

namespace vorn::synth {

Signal pluckedString(double rate, double hertz, double decay, double place) {
  constexpr double kStiffness = 0.00012, kHighest = 9000;
  std::vector<Mode> modes;
  for (int k = 1;; ++k) {
    const double partial = k * hertz * std::sqrt(1 + kStiffness * k * k);
    if (partial > kHighest) break;
    modes.push_back({partial, std::sin(kPi * k * place) / k, decay / std::pow(k, 0.75)});
  }
  return strike(rate, decay, modes, 0.0008);
}

Signal banjo(double rate, double hertz, double seconds) {
  Signal sound = highpass(pluckedString(rate, hertz, 0.55, 0.09), rate, 320);
  sound = peaking(peaking(sound, rate, 780, 1.5, 6), rate, 2500, 1, 9);
  sound.resize(static_cast<std::size_t>(framesOf(rate, seconds)));
  fadeOut(sound, framesOf(rate, 0.02));
  return sound;
}

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
