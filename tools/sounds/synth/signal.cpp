#include "signal.h"

#include <algorithm>

namespace vorn::synth {

double peakOf(const Signal& signal) {
  double peak = 0;
  for (const double value : signal) peak = std::max(peak, std::abs(value));
  return peak;
}

Signal& scale(Signal& signal, double gain) {
  for (double& value : signal) value *= gain;
  return signal;
}

Signal withPeak(Signal signal, double peak) {
  const double now = peakOf(signal);
  if (now > 0) scale(signal, peak / now);
  return signal;
}

void mixInto(Signal& into, const Signal& added, double gain) {
  const std::size_t frames = std::min(into.size(), added.size());
  for (std::size_t i = 0; i < frames; ++i) into[i] += gain * added[i];
}

namespace {

double raisedCosine(int i, int frames) {
  return 0.5 - 0.5 * std::cos(kPi * i / frames);
}

}  // namespace

void fadeIn(Signal& signal, int frames) {
  frames = std::min(frames, static_cast<int>(signal.size()));
  for (int i = 0; i < frames; ++i) signal[static_cast<std::size_t>(i)] *= raisedCosine(i, frames);
}

void fadeOut(Signal& signal, int frames) {
  frames = std::min(frames, static_cast<int>(signal.size()));
  for (int i = 0; i < frames; ++i)
    signal[signal.size() - 1 - static_cast<std::size_t>(i)] *= raisedCosine(i, frames);
}

void saturate(Signal& signal, double drive) {
  for (double& value : signal) value = std::tanh(drive * value) / std::tanh(drive);
}

}  // namespace vorn::synth
