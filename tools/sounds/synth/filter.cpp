#include "filter.h"

#include <algorithm>

namespace vorn::synth {
namespace {

/// Moving filters are retuned every so many samples: often enough to be smooth.
constexpr std::size_t kRetuneEvery = 8;

template <typename Output>
Signal filtered(const Signal& signal, double rate, const Contour& hertz, const Contour& quality, Ends ends,
                Output output) {
  Resonator filter(rate);
  Signal result(signal.size());
  for (int pass = ends == Ends::kMeeting ? 0 : 1; pass < 2; ++pass) {
    for (std::size_t i = 0; i < signal.size(); ++i) {
      if (i % kRetuneEvery == 0) {
        const double seconds = static_cast<double>(i) / rate;
        filter.tune(hertz(seconds), quality(seconds));
      }
      filter.tick(signal[i]);
      result[i] = output(filter);
    }
  }
  return result;
}

/// The qualities of two second-order filters that are a Butterworth together.
constexpr double kFirstOfTwo = 0.541;
constexpr double kSecondOfTwo = 1.307;

}  // namespace

void Resonator::tune(double hertz, double quality) {
  g_ = std::tan(kPi * std::clamp(hertz / rate_, 1e-5, 0.49));
  damping_ = 1 / quality;
  scale_ = 1 / (1 + g_ * (g_ + damping_));
}

void Resonator::tick(double input) {
  high_ = (input - first_ * (g_ + damping_) - second_) * scale_;
  band_ = g_ * high_ + first_;
  low_ = g_ * band_ + second_;
  first_ = g_ * high_ + band_;
  second_ = g_ * band_ + low_;
}

Signal lowpass(const Signal& signal, double rate, const Contour& hertz, double quality, Ends ends) {
  return filtered(signal, rate, hertz, quality, ends, [](const Resonator& filter) { return filter.low(); });
}

Signal highpass(const Signal& signal, double rate, const Contour& hertz, double quality, Ends ends) {
  return filtered(signal, rate, hertz, quality, ends, [](const Resonator& filter) { return filter.high(); });
}

Signal bandpass(const Signal& signal, double rate, const Contour& hertz, const Contour& quality, Ends ends) {
  return filtered(signal, rate, hertz, quality, ends, [](const Resonator& filter) { return filter.band(); });
}

Signal steepLowpass(const Signal& signal, double rate, double hertz, Ends ends) {
  return lowpass(lowpass(signal, rate, hertz, kFirstOfTwo, ends), rate, hertz, kSecondOfTwo, ends);
}

Signal steepHighpass(const Signal& signal, double rate, double hertz, Ends ends) {
  return highpass(highpass(signal, rate, hertz, kFirstOfTwo, ends), rate, hertz, kSecondOfTwo, ends);
}

Signal peaking(const Signal& signal, double rate, double hertz, double quality, double decibels, Ends ends) {
  Signal result = signal;
  mixInto(result, bandpass(signal, rate, hertz, quality, ends), gainOf(decibels) - 1);
  return result;
}

Signal brightened(const Signal& signal, double rate, double decibels, Ends ends) {
  Signal sound = signal;
  mixInto(sound, highpass(signal, rate, 1800, 0.5, ends), gainOf(decibels) - 1);
  return sound;
}

}  // namespace vorn::synth
