#include "water.h"

#include <algorithm>

#include "contour.h"
#include "filter.h"
#include "modal.h"
#include "tones.h"

namespace vorn::synth {
namespace {

void addAt(Signal& into, double rate, double seconds, const Signal& event, double gain) {
  const auto first = static_cast<std::size_t>(framesOf(rate, seconds));
  for (std::size_t i = 0; i < event.size() && first + i < into.size(); ++i)
    into[first + i] += gain * event[i];
}

}  // namespace

Signal bubble(double rate, double hertz, double rise) {
  const double radius = 3.0 / hertz;  // metres
  const double damping = 0.13 / radius + 0.0072 / std::pow(radius, 1.5);
  const double decay = std::min(0.2, 6.9 / damping);
  return sine(
      rate, decay, [hertz, rise](double now) { return hertz * (1 + rise * now); },
      [decay](double now) { return std::min(1.0, now / 0.0015) * std::pow(10.0, -3 * now / decay); });
}

Signal bubbles(Noise& noise, double rate, int count, double lowHertz, double highHertz, double seconds) {
  Signal whole(static_cast<std::size_t>(framesOf(rate, seconds + 0.2)));
  for (int i = 0; i < count; ++i) {
    const double share = noise.between(0, 1);
    const double hertz = lowHertz * std::pow(highHertz / lowHertz, noise.between(0, 1));
    addAt(whole, rate, seconds * share * share, bubble(rate, hertz, noise.between(1, 6)),
          noise.between(0.3, 1) * (1 - 0.6 * share));
  }
  return whole;
}

Signal splash(Noise& noise, double rate, double size) {
  const double seconds = 0.25 + 0.45 * size;
  Signal air = white(noise, framesOf(rate, seconds + 0.3));
  // It opens bright and falls as the water closes.
  const Contour middle = glide({{0, 5200 - 1500 * size}, {0.25 * seconds, 2600}, {seconds, 1300}});
  Signal spray =
      shaped(bandpass(air, rate, middle, 0.6), rate,
             Contour{{0, 0}, {0.008, 1}, {0.15 * seconds, 0.45}, {seconds, 0.05}, {seconds + 0.2, 0}});
  mixInto(spray, thump(rate, 240, 110, 0.12), 0.5 * size);
  mixInto(spray, bubbles(noise, rate, static_cast<int>(10 + 30 * size), 700, 3600, seconds), 0.22);
  return spray;
}

Signal squelch(Noise& noise, double rate, double seconds) {
  const auto frames = framesOf(rate, seconds);
  Signal air = white(noise, frames);
  // Wet means many small closures: the noise crackles.
  Signal wet(air.size());
  double gate = 0;
  for (std::size_t i = 0; i < air.size(); ++i) {
    if (noise.chance(420 / rate)) gate = noise.between(0.4, 1.6);
    gate *= std::exp(-1 / (0.0022 * rate));
    wet[i] = air[i] * (0.22 + gate);
  }
  const Contour mouth = glide({{0, 900}, {0.25 * seconds, 2500}, {0.55 * seconds, 1300}, {seconds, 2900}});
  Signal sound = bandpass(wet, rate, mouth, 2.2);
  mixInto(sound, bandpass(wet, rate, 3600, 1.5), 0.5);
  sound = shaped(std::move(sound), rate,
                 Contour{{0, 0}, {0.012, 1}, {0.3 * seconds, 0.35}, {0.6 * seconds, 0.75}, {seconds, 0}});
  // What is sucked in falls in pitch.
  const Signal suck =
      sine(rate, seconds, glide({{0, 950}, {0.5 * seconds, 420}, {seconds, 700}}),
           Contour{{0, 0}, {0.02, 0.5}, {0.5 * seconds, 0.12}, {0.8 * seconds, 0.3}, {seconds, 0}});
  mixInto(sound, suck, 0.14);
  return sound;
}

Signal glug(Noise& noise, double rate, double seconds, double lowHertz, double highHertz) {
  const Contour pitch = glide({{0, lowHertz}, {0.7 * seconds, highHertz}, {seconds, 1.05 * highHertz}});
  const Contour swelling{{0, 0}, {0.012, 1}, {0.4 * seconds, 0.7}, {seconds, 0}};
  Signal sound = harmonics(rate, seconds, pitch, {0.75, 0.8, 0.6, 0.35, 0.2}, swelling);
  const Signal air = white(noise, static_cast<int>(sound.size()));
  mixInto(sound,
          shaped(bandpass(
                     air, rate, [&pitch](double now) { return 3 * pitch(now); }, 3),
                 rate, swelling),
          1.2);
  return sound;
}

}  // namespace vorn::synth
