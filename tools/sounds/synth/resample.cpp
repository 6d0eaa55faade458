#include "resample.h"

#include <algorithm>
#include <array>

namespace vorn::synth {
namespace {

constexpr int kReach = 32;          // samples of the lower rate each side of the filter
constexpr double kPassband = 0.94;  // of half the lower rate

/// A sinc under a Kaiser-like (Blackman-Harris) window, `x` in samples of the
/// lower rate.
double lowpassKernel(double x) {
  if (std::abs(x) >= kReach) return 0;
  const double angle = kPi * x / kReach;
  const double window =
      0.35875 + 0.48829 * std::cos(angle) + 0.14128 * std::cos(2 * angle) + 0.01168 * std::cos(3 * angle);
  const double turned = kPi * kPassband * x;
  return kPassband * window * (std::abs(turned) < 1e-9 ? 1 : std::sin(turned) / turned);
}

/// `signal` with `reach` more samples at both ends: its other end, or silence.
Signal extended(const Signal& signal, std::size_t reach, Ends ends) {
  Signal result(signal.size() + 2 * reach);
  for (std::size_t i = 0; i < result.size(); ++i) {
    const std::size_t from = i + signal.size() * (1 + reach / signal.size()) - reach;
    const bool inside = i >= reach && i < reach + signal.size();
    if (inside || ends == Ends::kMeeting) result[i] = signal[from % signal.size()];
  }
  return result;
}

}  // namespace

Signal decimated(const Signal& signal, Ends ends) {
  constexpr std::size_t kTaps = 2 * kReach;
  std::array<double, 2 * kTaps + 1> kernel{};
  for (std::size_t k = 0; k < kernel.size(); ++k) {
    kernel[k] = lowpassKernel((static_cast<double>(k) - kTaps) / 2) / 2;
  }
  const Signal padded = extended(signal, kTaps, ends);
  Signal result(signal.size() / 2);
  for (std::size_t i = 0; i < result.size(); ++i) {
    double sum = 0;
    for (std::size_t k = 0; k < kernel.size(); ++k) sum += kernel[k] * padded[2 * i + k];
    result[i] = sum;
  }
  return result;
}

Signal resampled(const Signal& signal, double fromRate, double toRate) {
  const double ratio = fromRate / toRate;
  const double lower = std::min(1.0, toRate / fromRate);  // the lower rate, in samples of `signal`
  const auto size = static_cast<std::ptrdiff_t>(signal.size());
  Signal result(static_cast<std::size_t>(std::floor(static_cast<double>(size) / ratio)));
  const auto reach = static_cast<std::ptrdiff_t>(std::ceil(kReach / lower));
  for (std::size_t i = 0; i < result.size(); ++i) {
    const double place = static_cast<double>(i) * ratio;
    const auto middle = static_cast<std::ptrdiff_t>(std::floor(place));
    const std::ptrdiff_t first = std::max<std::ptrdiff_t>(0, middle - reach);
    const std::ptrdiff_t last = std::min(size - 1, middle + reach);
    double sum = 0;
    for (std::ptrdiff_t k = first; k <= last; ++k) {
      sum += lower * lowpassKernel((static_cast<double>(k) - place) * lower) *
             signal[static_cast<std::size_t>(k)];
    }
    result[i] = sum;
  }
  return result;
}

}  // namespace vorn::synth
