#include "modal.h"

#include "contour.h"
#include "filter.h"
#include "tones.h"

namespace vorn::synth {

Signal strike(double rate, double seconds, const std::vector<Mode>& modes, double attack) {
  Signal signal(static_cast<std::size_t>(framesOf(rate, seconds)));
  for (const Mode& mode : modes) {
    if (mode.hertz > 0.45 * rate) continue;
    const double angle = kTwoPi * mode.hertz / rate;
    const double decay = std::pow(10.0, -3 / (mode.decay * rate));
    const double cosine = std::cos(angle), sine = std::sin(angle);
    double real = 1, imaginary = 0;
    for (double& value : signal) {
      value += mode.amplitude * imaginary;
      const double turned = decay * (real * cosine - imaginary * sine);
      imaginary = decay * (real * sine + imaginary * cosine);
      real = turned;
    }
  }
  fadeIn(signal, framesOf(rate, attack));
  return signal;
}

std::vector<Mode> retuned(std::vector<Mode> modes, double pitch, double length) {
  for (Mode& mode : modes) {
    mode.hertz *= pitch;
    mode.decay *= length;
  }
  return modes;
}

Signal thump(double rate, double fromHertz, double toHertz, double decay) {
  return sine(rate, decay, glide({{0, fromHertz}, {decay / 3, toHertz}}), ringing(0.001, decay));
}

Signal burst(Noise& noise, double rate, double hertz, double quality, double attack, double decay) {
  Signal signal = white(noise, framesOf(rate, attack + decay));
  return shaped(bandpass(signal, rate, hertz, quality), rate, ringing(attack, decay));
}

}  // namespace vorn::synth
