/// Small measurements of signals for the tests of the sounds.
#pragma once

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "synth/signal.h"

namespace vorn::test {

using synth::Signal;

inline Signal stretch(const Signal& signal, std::size_t from, std::size_t frames) {
  return {signal.begin() + static_cast<std::ptrdiff_t>(from),
          signal.begin() + static_cast<std::ptrdiff_t>(std::min(signal.size(), from + frames))};
}

inline double meanSquare(const Signal& signal) {
  double sum = 0;
  for (const double value : signal) sum += value * value;
  return sum / static_cast<double>(signal.size());
}

inline double decibels(double power) {
  return 10 * std::log10(power + 1e-20);
}

/// Power at `hertz`, under a raised-cosine window.
inline double powerAt(const Signal& signal, double rate, double hertz) {
  const double coefficient = 2 * std::cos(synth::kTwoPi * hertz / rate);
  double before = 0, now = 0;
  for (std::size_t i = 0; i < signal.size(); ++i) {
    const double share = static_cast<double>(i) / static_cast<double>(signal.size());
    const double next =
        signal[i] * (0.5 - 0.5 * std::cos(synth::kTwoPi * share)) + coefficient * now - before;
    before = std::exchange(now, next);
  }
  return now * now + before * before - coefficient * now * before;
}

/// Where the middle of the spectrum lies, in hertz, between 20 Hz and `highest`.
inline double centroid(const Signal& signal, double rate, double highest) {
  double sum = 0, weighted = 0;
  const double spacing = 1.5 * rate / static_cast<double>(signal.size());  // about a window's width
  for (double hertz = std::max(20.0, spacing); hertz < highest; hertz += spacing) {
    const double power = powerAt(signal, rate, hertz);
    sum += power;
    weighted += hertz * power;
  }
  return weighted / sum;
}

/// The means of three neighbours.
inline std::vector<double> smoothed(const std::vector<double>& values) {
  std::vector<double> result;
  for (std::size_t i = 1; i + 1 < values.size(); ++i) {
    result.push_back((values[i - 1] + values[i] + values[i + 1]) / 3);
  }
  return result;
}

/// The deepest fall below an earlier value, as a share of that.
inline double deepestFall(const std::vector<double>& values) {
  double highest = 0, deepest = 0;
  for (const double value : values) {
    highest = std::max(highest, value);
    deepest = std::max(deepest, 1 - value / highest);
  }
  return deepest;
}

/// Similarity of `signal` with itself `lag` samples later, -1..1.
inline double correlation(const Signal& signal, double lag) {
  const auto whole = static_cast<std::size_t>(lag);
  const double share = lag - std::floor(lag);
  double product = 0, one = 0, other = 0;
  for (std::size_t i = 0; i + whole + 1 < signal.size(); ++i) {
    const double later = (1 - share) * signal[i + whole] + share * signal[i + whole + 1];
    product += signal[i] * later;
    one += signal[i] * signal[i];
    other += later * later;
  }
  return product / std::sqrt(one * other + 1e-20);
}

}  // namespace vorn::test
