/// Signals for the sound tests, and what is measured in what comes out.
#pragma once

#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "platform/mixing/wav_file.h"

namespace vorn::test {

using Signal = std::vector<float>;

inline double decibels(double amplitudeRatio) {
  return 20 * std::log10(std::max(amplitudeRatio, 1e-12));
}

/// `cycles` whole turns of a sine in `frames` frames: it loops without a seam.
inline Signal sine(std::size_t frames, double cycles, double amplitude) {
  Signal out(frames);
  for (std::size_t i = 0; i < frames; ++i) {
    out[i] = static_cast<float>(amplitude * std::sin(2 * std::numbers::pi * cycles * static_cast<double>(i) /
                                                     static_cast<double>(frames)));
  }
  return out;
}

inline Signal noise(std::size_t frames, double amplitude, unsigned seed = 1) {
  std::mt19937 engine(seed);
  Signal out(frames);
  for (float& sample : out) {
    sample = static_cast<float>(amplitude * (static_cast<double>(engine()) / 2147483648.0 - 1));
  }
  return out;
}

inline std::shared_ptr<const Recording> recordingOf(int rate, Signal left, Signal right = {},
                                                    int sampleBytes = 2) {
  Recording recording;
  recording.rate = rate;
  recording.channels = right.empty() ? 1 : 2;
  recording.bytesPerFrame = sampleBytes * recording.channels;
  recording.planes = {std::move(left), std::move(right)};
  return std::make_shared<const Recording>(std::move(recording));
}

inline double rms(const Signal& signal) {
  double sum = 0;
  for (const float sample : signal) {
    sum += static_cast<double>(sample) * static_cast<double>(sample);
  }
  return signal.empty() ? 0 : std::sqrt(sum / static_cast<double>(signal.size()));
}

inline double peak(const Signal& signal) {
  double highest = 0;
  for (const float sample : signal) {
    highest = std::max(highest, std::abs(static_cast<double>(sample)));
  }
  return highest;
}

inline Signal part(const Signal& signal, std::size_t from, std::size_t count) {
  return {signal.begin() + static_cast<std::ptrdiff_t>(from),
          signal.begin() + static_cast<std::ptrdiff_t>(from + count)};
}

/// The sine of `hertz` that fits best into 48 kHz samples, and what is left.
struct SineFit {
  double amplitude;
  double restRms;  ///< of the signal less the sine
  double phase;
};

inline SineFit fitSine(const Signal& signal, double hertz) {
  double ss = 0, cc = 0, sc = 0, sx = 0, cx = 0;
  const double w = 2 * std::numbers::pi * hertz / 48000;
  for (std::size_t i = 0; i < signal.size(); ++i) {
    const double s = std::sin(w * static_cast<double>(i)), c = std::cos(w * static_cast<double>(i)),
                 x = signal[i];
    ss += s * s, cc += c * c, sc += s * c, sx += s * x, cx += c * x;
  }
  const double det = ss * cc - sc * sc;
  const double a = (sx * cc - cx * sc) / det, b = (cx * ss - sx * sc) / det;
  double rest = 0;
  for (std::size_t i = 0; i < signal.size(); ++i) {
    const double d = static_cast<double>(signal[i]) - a * std::sin(w * static_cast<double>(i)) -
                     b * std::cos(w * static_cast<double>(i));
    rest += d * d;
  }
  return {std::hypot(a, b), std::sqrt(rest / static_cast<double>(signal.size())), std::atan2(b, a)};
}

/// What is left of a 48 kHz signal above `hertz`: 255 taps, 80 dB down 700 Hz below.
inline Signal above(const Signal& signal, double hertz) {
  constexpr int kHalf = 127;
  std::vector<double> taps(2 * kHalf + 1);
  for (int i = -kHalf; i <= kHalf; ++i) {
    const double x = std::numbers::pi * i, f = hertz / 24000;
    const double low = i == 0 ? f : std::sin(f * x) / x;
    const double turn = std::numbers::pi * i / (kHalf + 1);
    const double window = 0.42 + 0.5 * std::cos(turn) + 0.08 * std::cos(2 * turn);
    taps[static_cast<std::size_t>(i + kHalf)] = ((i == 0 ? 1 : 0) - low) * window;
  }
  Signal out;
  for (std::size_t i = 0; i + taps.size() <= signal.size(); ++i) {
    double sum = 0;
    for (std::size_t k = 0; k < taps.size(); ++k) {
      sum += taps[k] * static_cast<double>(signal[i + k]);
    }
    out.push_back(static_cast<float>(sum));
  }
  return out;
}

}  // namespace vorn::test
