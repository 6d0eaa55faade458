#include "tones.h"

namespace vorn::synth {
namespace {

/// Runs a phase (in periods) along `hertz` and asks `wave` for each sample.
template <typename Wave>
Signal along(double rate, double seconds, const Contour& hertz, const Contour& amplitude, Wave wave) {
  Signal signal(static_cast<std::size_t>(framesOf(rate, seconds)));
  double phase = 0;
  for (std::size_t i = 0; i < signal.size(); ++i) {
    const double now = static_cast<double>(i) / rate;
    const double step = hertz(now) / rate;
    signal[i] = amplitude(now) * wave(phase, step);
    phase += step;
    phase -= std::floor(phase);
  }
  return signal;
}

/// What a jump of a saw needs on either side to stay within its band.
double jumpCorrection(double phase, double step) {
  if (phase < step) {
    const double x = phase / step;
    return x + x - x * x - 1;
  }
  if (phase > 1 - step) {
    const double x = (phase - 1) / step;
    return x * x + x + x + 1;
  }
  return 0;
}

}  // namespace

Signal sine(double rate, double seconds, const Contour& hertz, const Contour& amplitude) {
  return along(rate, seconds, hertz, amplitude,
               [](double phase, double) { return std::sin(kTwoPi * phase); });
}

Signal harmonics(double rate, double seconds, const Contour& hertz, const std::vector<double>& partials,
                 const Contour& amplitude) {
  return along(rate, seconds, hertz, amplitude, [&partials](double phase, double step) {
    // sin((k + 1) x) from sin(k x) and sin((k - 1) x).
    const double twiceCosine = 2 * std::cos(kTwoPi * phase);
    double before = 0, now = std::sin(kTwoPi * phase), sum = 0;
    for (std::size_t k = 0; k < partials.size() && static_cast<double>(k + 1) * step < 0.45; ++k) {
      sum += partials[k] * now;
      const double next = twiceCosine * now - before;
      before = now;
      now = next;
    }
    return sum;
  });
}

Signal saw(double rate, double seconds, const Contour& hertz, const Contour& amplitude) {
  return along(rate, seconds, hertz, amplitude,
               [](double phase, double step) { return 2 * phase - 1 - jumpCorrection(phase, step); });
}

Signal pulses(double rate, double seconds, const Contour& hertz, double width, const Contour& amplitude) {
  return along(rate, seconds, hertz, amplitude, [width](double phase, double) {
    return phase < width ? 0.5 - 0.5 * std::cos(kTwoPi * phase / width) : 0.0;
  });
}

Signal howl(Noise& noise, double rate, double seconds, const Contour& hertz, double spread, Ends ends) {
  constexpr double kTrembling = 45;  // hertz
  const int frames = framesOf(rate, seconds);
  Signal tremble = lowpass(white(noise, frames), rate, kTrembling, 0.707, ends);
  // White noise of variance 1/3 keeps this share of it under the lowpass.
  scale(tremble, spread / std::sqrt(kTrembling * 2.2 / rate / 3));
  Signal periods(tremble.size() + 1);
  for (std::size_t i = 0; i < tremble.size(); ++i) {
    periods[i + 1] = periods[i] + hertz(static_cast<double>(i) / rate) * (1 + tremble[i]) / rate;
  }
  const double stretch = ends == Ends::kMeeting ? std::round(periods.back()) / periods.back() : 1;
  for (std::size_t i = 0; i < tremble.size(); ++i) tremble[i] = std::sin(kTwoPi * stretch * periods[i]);
  return tremble;
}

std::vector<double> falling(int count, double decibelsPerOctave) {
  std::vector<double> partials;
  for (int k = 1; k <= count; ++k) partials.push_back(gainOf(decibelsPerOctave * std::log2(k)));
  return partials;
}

Signal shaped(Signal signal, double rate, const Contour& gain) {
  for (std::size_t i = 0; i < signal.size(); ++i) signal[i] *= gain(static_cast<double>(i) / rate);
  return signal;
}

double noteHertz(double semitones) {
  return 440 * std::exp2(semitones / 12);
}

}  // namespace vorn::synth
