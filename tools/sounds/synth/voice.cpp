#include "voice.h"

#include <cmath>
#include <vector>

#include "filter.h"
#include "tones.h"

namespace vorn::synth {
namespace {

constexpr int kThroatPartials = 60;

Signal throat(Noise& noise, double rate, const Call& call) {
  Signal tone = harmonics(rate, call.seconds, call.hertz, falling(kThroatPartials, call.tilt));
  const Signal air = white(noise, static_cast<int>(tone.size()));
  for (std::size_t i = 0; i < tone.size(); ++i) {
    const double now = static_cast<double>(i) / rate;
    const double share = call.breath(now);
    const double flutter = 1 - call.roughness * (0.5 + 0.5 * std::sin(kTwoPi * call.roughHertz * now));
    tone[i] = flutter * ((1 - share) * tone[i] + share * air[i]);
  }
  return tone;
}

}  // namespace

Mouth sized(Mouth mouth, double factor) {
  for (Formant& formant : mouth) {
    formant.hertz *= factor;
    formant.bandwidth *= factor;
  }
  return mouth;
}

Signal voiced(Noise& noise, double rate, const Call& call) {
  const Signal source = throat(noise, rate, call);
  Signal voice(source.size());
  for (std::size_t k = 0; k < call.from.size(); ++k) {
    const auto between = [&](double from, double to) {
      return Contour([&call, from, to](double now) { return from + (to - from) * call.opening(now); });
    };
    const Formant& a = call.from[k];
    const Formant& b = call.to[k];
    const Contour hertz = between(a.hertz, b.hertz);
    const Contour quality = between(a.hertz / a.bandwidth, b.hertz / b.bandwidth);
    mixInto(voice, shaped(bandpass(source, rate, hertz, quality), rate,
                          between(gainOf(a.decibels), gainOf(b.decibels))));
  }
  return shaped(std::move(voice), rate, call.amplitude);
}

}  // namespace vorn::synth
