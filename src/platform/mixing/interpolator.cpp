#include "platform/mixing/interpolator.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <numbers>

namespace vorn {
namespace {

constexpr int kPlaceBits = 6;
constexpr int kPlaces = 1 << kPlaceBits;  ///< sub-sample places with taps of their own
using Lanes = Interpolator::Lanes;
constexpr int kLanes = Interpolator::kLanes;
constexpr int kMaxTaps = 2 * Interpolator::kReach;

constexpr double kCutoff = 0.94;     ///< of the source's (or the output's) upper limit
constexpr double kKaiserBeta = 7.5;  ///< side lobes below -75 dB

/// Modified Bessel function of the first kind, order 0, by its series.
double besselI0(double x) {
  double term = 1, sum = 1;
  for (int k = 1; k < 40; ++k) {
    term *= (x / (2 * k)) * (x / (2 * k));
    sum += term;
  }
  return sum;
}

double sinc(double x) {
  return x == 0 ? 1 : std::sin(std::numbers::pi * x) / (std::numbers::pi * x);
}

/// The kernel of `taps` taps at `distance` source frames from its middle.
double kernelAt(double distance, int taps, double cutoff) {
  const double edge = distance / (taps / 2.0);
  if (std::abs(edge) >= 1) {
    return 0;
  }
  return cutoff * sinc(cutoff * distance) * besselI0(kKaiserBeta * std::sqrt(1 - edge * edge)) /
         besselI0(kKaiserBeta);
}

/// The taps for the place `fraction` behind a source frame, adding up to 1.
std::array<double, kMaxTaps> tapsFor(double fraction, int taps, double cutoff) {
  std::array<double, kMaxTaps> row{};
  double sum = 0;
  const int middle = taps / 2 - 1;
  for (int tap = 0; tap < taps; ++tap) {
    row[tap] = kernelAt(tap - middle - fraction, taps, cutoff);
    sum += row[tap];
  }
  for (double& tap : row) {
    tap /= sum;
  }
  return row;
}

void appendLanes(std::vector<Lanes>& rows, const std::array<double, kMaxTaps>& row, int taps) {
  for (int tap = 0; tap < taps; tap += kLanes) {
    Lanes lanes{};
    for (int lane = 0; lane < kLanes; ++lane) {
      lanes[lane] = static_cast<float>(row[tap + lane]);
    }
    rows.push_back(lanes);
  }
}

/// Copies the `taps` frames from `first` on, as they sound beyond either end.
void gather(const SampleSource& source, std::int64_t first, int taps, float* frames) {
  for (int tap = 0; tap < taps; ++tap) {
    std::int64_t frame = first + tap;
    if (source.looping) {
      frame = (frame % source.frames + source.frames) % source.frames;
    }
    frames[tap] = frame >= 0 && frame < source.frames ? source.samples[frame] : 0.0F;
  }
}

Lanes load(const float* from) {
  Lanes lanes;
  std::memcpy(&lanes, from, sizeof lanes);
  return lanes;
}

/// One sample: `frames` weighted with the taps of a row and their share of the
/// way `along` to the next row.
template <int kTaps>
float weigh(const float* frames, const Lanes* row, float along) {
  constexpr int kSteps = kTaps / kLanes;
  Lanes straight{}, onward{};
#pragma GCC unroll 16
  for (int i = 0; i < kSteps; ++i) {
    const Lanes values = load(frames + i * kLanes);
    straight += values * row[i];
    onward += values * row[kSteps + i];
  }
  const Lanes sum = straight + onward * along;
  return (sum[0] + sum[1]) + (sum[2] + sum[3]);
}

template <int kTaps>
void readWith(const Lanes* rows, const SampleSource& source, const Phase* offsets, float* out, int count) {
  constexpr int kBefore = kTaps / 2 - 1;
  constexpr int kAlongBits = kPhaseBits - kPlaceBits;
  const Phase length = static_cast<Phase>(source.frames) << kPhaseBits;
  std::array<float, kTaps> edge;
  for (int i = 0; i < count; ++i) {
    Phase at = source.position + offsets[i];
    if (at >= length && source.looping) {
      at %= length;
    }
    const std::int64_t first = static_cast<std::int64_t>(at >> kPhaseBits) - kBefore;
    const bool inside = first >= 0 && first + kTaps <= source.frames;
    if (!inside) {
      gather(source, first, kTaps, edge.data());
    }
    const auto fraction = static_cast<std::uint32_t>(at);
    const auto along = static_cast<float>(static_cast<std::int32_t>(fraction & ((1U << kAlongBits) - 1))) *
                       (1.0F / static_cast<float>(1U << kAlongBits));
    const Lanes* row = rows + static_cast<std::size_t>(fraction >> kAlongBits) * 2 * (kTaps / kLanes);
    out[i] = weigh<kTaps>(inside ? source.samples + first : edge.data(), row, along);
  }
}

/// A kernel length for steps up to `stretch` source frames an output frame.
struct Kernel {
  double stretch;
  int taps;
  void (*read)(const Lanes* rows, const SampleSource& source, const Phase* offsets, float* out, int count);
};

template <int kTaps>
constexpr Kernel kernelOf(double stretch) {
  static_assert(kTaps % kLanes == 0 && kTaps <= kMaxTaps);
  return {stretch, kTaps, readWith<kTaps>};
}

/// As the stretch grows the kernel does, so that it cuts off as steeply.
constexpr std::array kKernels{kernelOf<24>(1.0), kernelOf<28>(1.1), kernelOf<32>(1.3), kernelOf<40>(1.65),
                              kernelOf<52>(Interpolator::kFastest)};

}  // namespace

Interpolator::Interpolator() {
  static_assert(kKernels.size() == kBanks);
  for (std::size_t bank = 0; bank < kBanks; ++bank) {
    const auto& [stretch, taps, read] = kKernels[bank];
    auto& rows = banks_[bank];
    rows.reserve(static_cast<std::size_t>(kPlaces * 2 * taps / kLanes));
    auto row = tapsFor(0, taps, kCutoff / stretch);
    for (int place = 1; place <= kPlaces; ++place) {
      const auto next = tapsFor(static_cast<double>(place) / kPlaces, taps, kCutoff / stretch);
      std::array<double, kMaxTaps> change;
      std::transform(next.begin(), next.end(), row.begin(), change.begin(), std::minus<>());
      appendLanes(rows, row, taps);
      appendLanes(rows, change, taps);
      row = next;
    }
  }
}

void Interpolator::read(const SampleSource& source, const Phase* offsets, Phase step, float* out,
                        int count) const {
  const double ratio = std::ldexp(static_cast<double>(step), -kPhaseBits);
  std::size_t bank = 0;
  while (bank + 1 < kBanks && ratio > kKernels[bank].stretch) {
    ++bank;
  }
  kKernels[bank].read(banks_[bank].data(), source, offsets, out, count);
}

}  // namespace vorn
