#include "pipes.h"

#include "filter.h"
#include "tones.h"

namespace vorn::synth {

Signal pipe(Noise& noise, double rate, const Pipe& pipe) {
  const Contour swelling = swell(pipe.attack, pipe.release, pipe.seconds);
  const Contour pitch = pipe.vibrato > 0 ? vibrato(pipe.hertz, pipe.vibratoHertz, pipe.vibrato) : pipe.hertz;
  // The upper partials speak first, the first one stands last.
  std::vector<double> upper = pipe.partials;
  if (!upper.empty()) upper.front() = 0;
  Signal sound = harmonics(rate, pipe.seconds, pitch, pipe.partials, swelling);
  const Contour early = [&](double now) { return swelling(now) * std::exp(-now / (1.5 * pipe.attack)); };
  mixInto(sound, harmonics(rate, pipe.seconds, pitch, upper, early), 2 * pipe.chiff);
  const Signal air = white(noise, static_cast<int>(sound.size()));
  const Signal edge = bandpass(
      air, rate, [&pitch](double now) { return 2.5 * pitch(now); }, 1.2);
  mixInto(sound,
          shaped(edge, rate,
                 [&](double now) {
                   return swell(0.004, pipe.release, pipe.seconds)(now) *
                          (pipe.breath + pipe.chiff * std::exp(-now / pipe.attack));
                 }),
          2);
  return sound;
}

std::vector<double> stoppedWood() {
  return {1, 0.12, 0.5, 0.06, 0.16, 0.03, 0.06};
}

std::vector<double> fairground() {
  return {1, 0.85, 0.8, 0.6, 0.5, 0.38, 0.3, 0.2, 0.15, 0.1, 0.07};
}

}  // namespace vorn::synth
