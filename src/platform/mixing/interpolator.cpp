#include "platform/mixing/interpolator.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numbers>
#include <tuple>

// Inlined into each version of its caller, so that it is compiled for the same processors.
#if defined(__GNUC__)
#define VORN_INLINE [[gnu::always_inline]] inline
#else
#define VORN_INLINE inline
#endif

// A second version of a function for processors with wider registers. (Windows does not align its stack for
// them.)
#if defined(__x86_64__) && defined(__GNUC__) && !defined(_WIN32)
#define VORN_WIDER_LANES [[gnu::target("avx2")]]
#endif

namespace vorn {
namespace {

constexpr int kPlaceBits = 7;
constexpr int kPlaces = 1 << kPlaceBits;  ///< sub-sample places with taps of their own

/// Samples that the processor handles at once, or in two halves where it cannot: the results are the same.
constexpr int kLanes = 8;
using Lanes = float __attribute__((vector_size(kLanes * sizeof(float))));

using CacheLine = Interpolator::CacheLine;
constexpr int kTapsALine = std::tuple_size_v<decltype(CacheLine::taps)>;

constexpr int kMaxTaps = 2 * Interpolator::kReach;

constexpr double kCutoff = 0.94;     ///< of the source's (or the output's) upper limit
constexpr double kKaiserBeta = 7.5;  ///< side lobes below -75 dB

/// Modified Bessel function of the first kind, order 0, by its series.
double besselI0(double x) {
  double term = 1, sum = 1;
  for (int k = 1; term > 1e-17 * sum; ++k) {
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
  static const double middle = besselI0(kKaiserBeta);
  const double edge = distance / (taps / 2.0);
  if (std::abs(edge) >= 1) {
    return 0;
  }
  return cutoff * sinc(cutoff * distance) * besselI0(kKaiserBeta * std::sqrt(1 - edge * edge)) / middle;
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

/// Writes a row: the taps of a place, and what to add to them on the way to the next one.
void writeRow(CacheLine* lines, int taps, const std::array<double, kMaxTaps>& row,
              const std::array<double, kMaxTaps>& next) {
  for (int tap = 0; tap < taps; ++tap) {
    const auto write = [&](int place, double value) {
      lines[place / kTapsALine].taps[place % kTapsALine] = static_cast<float>(value);
    };
    write(tap, row[tap]);
    write(taps + tap, next[tap] - row[tap]);
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

/// Sets `to` to the lanes at `from`. (Lanes are not returned: processors disagree on how.)
VORN_INLINE void load(Lanes& to, const float* from) {
  std::memcpy(&to, from, sizeof to);
}

/// Adds up the lanes of four samples.
VORN_INLINE void addUp(const Lanes (&lanes)[4], float* out) {
  using Half = float __attribute__((vector_size(kLanes / 2 * sizeof(float))));
  Half sums[4];
  for (int i = 0; i < 4; ++i) {
    sums[i] = __builtin_shufflevector(lanes[i], lanes[i], 0, 1, 2, 3) +
              __builtin_shufflevector(lanes[i], lanes[i], 4, 5, 6, 7);
  }
  const Half first = __builtin_shufflevector(sums[0], sums[1], 0, 4, 1, 5);
  const Half second = __builtin_shufflevector(sums[0], sums[1], 2, 6, 3, 7);
  const Half third = __builtin_shufflevector(sums[2], sums[3], 0, 4, 1, 5);
  const Half fourth = __builtin_shufflevector(sums[2], sums[3], 2, 6, 3, 7);
  const Half firstTwo = first + second, lastTwo = third + fourth;
  const Half sum = __builtin_shufflevector(firstTwo, lastTwo, 0, 1, 4, 5) +
                   __builtin_shufflevector(firstTwo, lastTwo, 2, 3, 6, 7);
  std::memcpy(out, &sum, sizeof sum);
}

/// A place in a kernel's table: the row of taps and how far on the way to the next one.
struct Place {
  const float* row;
  float along;
};

template <int kTaps>
VORN_INLINE Place placeOf(const CacheLine* lines, Phase at) {
  constexpr int kAlongBits = kPhaseBits - kPlaceBits;
  const auto fraction = static_cast<std::uint32_t>(at);
  return {lines[static_cast<std::size_t>(fraction >> kAlongBits) * (2 * kTaps / kTapsALine)].taps.data(),
          static_cast<float>(static_cast<std::int32_t>(fraction & ((1U << kAlongBits) - 1))) *
              (1.0F / static_cast<float>(1U << kAlongBits))};
}

/// One sample, its lanes not yet added up: `frames` weighted with the taps of a
/// row and their share of the way to the next row.
template <int kTaps>
VORN_INLINE void weigh(Lanes& sample, const float* frames, const Place& place) {
  constexpr int kSteps = kTaps / kLanes;
  Lanes values, taps, changes;
  sample = Lanes{};
#pragma GCC unroll 8
  for (int i = 0; i < kSteps; ++i) {
    load(values, frames + i * kLanes);
    load(taps, place.row + i * kLanes);
    load(changes, place.row + kTaps + i * kLanes);
    sample += values * (taps + changes * place.along);
  }
}

/// Where the kernel begins for a sample at `at`.
template <int kTaps>
std::int64_t firstFrame(Phase at) {
  return static_cast<std::int64_t>(at >> kPhaseBits) - (kTaps / 2 - 1);
}

/// Four samples, or the last `count` of them, that may draw on what lies beyond an end of the source.
template <int kTaps>
VORN_INLINE void readAtEdge(const CacheLine* lines, const SampleSource& source, const Phase* offsets,
                            float* out, int count) {
  const Phase length = static_cast<Phase>(source.frames) << kPhaseBits;
  std::array<float, kTaps> frames;
  Lanes samples[4]{};
  for (int i = 0; i < count; ++i) {
    Phase at = source.position + offsets[i];
    if (at >= length && source.looping) {
      at %= length;
    }
    gather(source, firstFrame<kTaps>(at), kTaps, frames.data());
    weigh<kTaps>(samples[i], frames.data(), placeOf<kTaps>(lines, at));
  }
  std::array<float, 4> sums;
  addUp(samples, sums.data());
  std::copy_n(sums.begin(), count, out);
}

template <int kTaps>
VORN_INLINE void readWith(const CacheLine* lines, const SampleSource& source, const Phase* offsets,
                          float* out, int count) {
  for (int i = 0; i < count; i += 4) {
    const int last = std::min(i + 3, count - 1);
    const bool inside = last == i + 3 && firstFrame<kTaps>(source.position + offsets[i]) >= 0 &&
                        firstFrame<kTaps>(source.position + offsets[last]) + kTaps <= source.frames;
    if (!inside) {
      readAtEdge<kTaps>(lines, source, offsets + i, out + i, last - i + 1);
      continue;
    }
    Lanes samples[4];
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) {
      const Phase at = source.position + offsets[i + k];
      weigh<kTaps>(samples[k], source.samples + firstFrame<kTaps>(at), placeOf<kTaps>(lines, at));
    }
    addUp(samples, out + i);
  }
}

using Read = void (*)(const CacheLine* lines, const SampleSource& source, const Phase* offsets, float* out,
                      int count);

template <int kTaps>
void readPlain(const CacheLine* lines, const SampleSource& source, const Phase* offsets, float* out,
               int count) {
  readWith<kTaps>(lines, source, offsets, out, count);
}

#ifdef VORN_WIDER_LANES
template <int kTaps>
VORN_WIDER_LANES void readWide(const CacheLine* lines, const SampleSource& source, const Phase* offsets,
                               float* out, int count) {
  readWith<kTaps>(lines, source, offsets, out, count);
}

template <int kTaps>
Read reader(bool mayBeWider) {
  return mayBeWider && __builtin_cpu_supports("avx2") != 0 ? readWide<kTaps> : readPlain<kTaps>;
}
#else
template <int kTaps>
Read reader(bool) {
  return readPlain<kTaps>;
}
#endif

/// A kernel length for steps up to `stretch` source frames an output frame.
struct Kernel {
  double stretch;
  int taps;
  Read (*reader)(bool mayBeWider);
};

template <int kTaps>
constexpr Kernel kernelOf(double stretch) {
  static_assert(kTaps % kLanes == 0 && 2 * kTaps % kTapsALine == 0 && kTaps <= kMaxTaps);
  return {stretch, kTaps, reader<kTaps>};
}

/// As the stretch grows the kernel does, so that it cuts off as steeply.
constexpr std::array kKernels{kernelOf<24>(1.0), kernelOf<32>(1.1), kernelOf<32>(1.3), kernelOf<40>(1.65),
                              kernelOf<56>(Interpolator::kFastest)};

}  // namespace

Interpolator::Interpolator(bool mayBeWider) {
  static_assert(kKernels.size() == kBanks);
  for (std::size_t bank = 0; bank < kBanks; ++bank) {
    const auto& [stretch, taps, reader] = kKernels[bank];
    const auto linesARow = static_cast<std::size_t>(2 * taps / kTapsALine);
    auto& lines = banks_[bank].lines;
    lines.resize(kPlaces * linesARow);
    auto row = tapsFor(0, taps, kCutoff / stretch);
    for (std::size_t place = 0; place < kPlaces; ++place) {
      const auto next = tapsFor(static_cast<double>(place + 1) / kPlaces, taps, kCutoff / stretch);
      writeRow(&lines[place * linesARow], taps, row, next);
      row = next;
    }
    banks_[bank].read = reader(mayBeWider);
  }
}

void Interpolator::read(const SampleSource& source, const Phase* offsets, Phase step, float* out,
                        int count) const {
  const double ratio = std::ldexp(static_cast<double>(step), -kPhaseBits);
  std::size_t bank = 0;
  while (bank + 1 < kBanks && ratio > kKernels[bank].stretch) {
    ++bank;
  }
  banks_[bank].read(banks_[bank].lines.data(), source, offsets, out, count);
}

}  // namespace vorn
