/// The material of all synthesis: a signal is a run of samples at a rate that
/// the caller keeps. Full scale is 1.
#pragma once

#include <cmath>
#include <numbers>
#include <vector>

namespace vorn::synth {

using Signal = std::vector<double>;

constexpr double kPi = std::numbers::pi;
constexpr double kTwoPi = 2 * std::numbers::pi;

inline double gainOf(double decibels) {
  return std::pow(10.0, decibels / 20);
}
inline double decibelsOf(double gain) {
  return 20 * std::log10(gain);
}

/// Samples in `seconds`, rounded.
inline int framesOf(double rate, double seconds) {
  return static_cast<int>(std::lround(rate * seconds));
}

/// Largest magnitude; 0 for an empty signal.
double peakOf(const Signal& signal);

/// Every sample times `gain`.
Signal& scale(Signal& signal, double gain);

/// `signal` brought to a peak of `peak`; silence stays silence.
Signal withPeak(Signal signal, double peak);

/// Sample by sample `into` += `gain` * `added`; the shorter length counts.
void mixInto(Signal& into, const Signal& added, double gain = 1);

/// Raised-cosine fades at both ends, in samples.
void fadeIn(Signal& signal, int frames);
void fadeOut(Signal& signal, int frames);

/// A tanh-shaped overload: `drive` 1 bends only the loudest parts, 4 distorts.
void saturate(Signal& signal, double drive);

}  // namespace vorn::synth
