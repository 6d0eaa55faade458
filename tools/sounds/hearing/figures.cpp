#include "figures.h"

#include <fftw3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>

#include "spectrogram.h"

namespace vorn::hearing {
namespace {

/// Edges of the critical bands, hertz.
constexpr std::array kBark{20.0,   100.0,  200.0,  300.0,  400.0,  510.0,  630.0,  770.0,
                           920.0,  1080.0, 1270.0, 1480.0, 1720.0, 2000.0, 2320.0, 2700.0,
                           3150.0, 3700.0, 4400.0, 5300.0, 6400.0, 7700.0, 9500.0};
constexpr std::size_t kBands = kBark.size() - 1;
constexpr double kSlowest = 20, kFastest = 300;  // tremblings that are heard as roughness, hertz
constexpr double kSideFrom = 1500;               // hertz

using Complexes = std::vector<std::complex<double>>;

Complexes transformed(Complexes values, int direction) {
  auto* data = reinterpret_cast<fftw_complex*>(values.data());
  const fftw_plan plan =
      fftw_plan_dft_1d(static_cast<int>(values.size()), data, data, direction, FFTW_ESTIMATE);
  fftw_execute(plan);
  fftw_destroy_plan(plan);
  return values;
}

double meanOf(const std::vector<double>& values) {
  double sum = 0;
  for (const double value : values) sum += value;
  return sum / static_cast<double>(values.size());
}

/// The envelope of what a critical band with soft edges lets through of a loop's spectrum.
std::vector<double> envelopeOf(const Complexes& spectrum, double binHertz, std::size_t band) {
  const double middle = (kBark[band] + kBark[band + 1]) / 2, width = 1.5 * (kBark[band + 1] - kBark[band]);
  Complexes passed(spectrum.size());
  for (std::size_t k = 1; k < spectrum.size() / 2; ++k) {
    const double away = std::abs(static_cast<double>(k) * binHertz - middle) / width;
    // Without its negative half a spectrum is that of a signal whose magnitude is the envelope.
    if (away < 1) passed[k] = 2 * std::cos(synth::kPi / 2 * away) * spectrum[k];
  }
  std::vector<double> envelope;
  for (const auto& value : transformed(std::move(passed), FFTW_BACKWARD)) {
    envelope.push_back(std::abs(value) / static_cast<double>(spectrum.size()));
  }
  return envelope;
}

/// Root mean square of what moves between the slowest and the fastest trembling.
double trembling(const std::vector<double>& envelope, double binHertz) {
  const Complexes spectrum = transformed({envelope.begin(), envelope.end()}, FFTW_FORWARD);
  double power = 0;
  for (std::size_t k = 1; k < spectrum.size() / 2; ++k) {
    const double hertz = static_cast<double>(k) * binHertz;
    if (hertz >= kSlowest && hertz <= kFastest) power += 2 * std::norm(spectrum[k]);
  }
  return std::sqrt(power) / static_cast<double>(spectrum.size());
}

double roughness(const Signal& loop, double rate) {
  const Complexes spectrum = transformed({loop.begin(), loop.end()}, FFTW_FORWARD);
  const double binHertz = rate / static_cast<double>(loop.size());
  double rough = 0, all = 1e-20;
  for (std::size_t band = 0; band < kBands; ++band) {
    const std::vector<double> envelope = envelopeOf(spectrum, binHertz, band);
    double power = 0;
    for (const double value : envelope) power += value * value;
    rough += power * trembling(envelope, binHertz) / (meanOf(envelope) + 1e-12);
    all += power;
  }
  return rough / all;
}

double strongestLine(const Signal& loop, double rate) {
  const Spectrogram moments = spectrogramOf(loop, rate, 0.2, 0.1);
  std::vector<double> powers(moments.frames.front().size());
  for (const auto& frame : moments.frames) {
    for (std::size_t k = 0; k < frame.size(); ++k) powers[k] += frame[k];
  }
  double all = 1e-20, strongest = 0;
  for (std::size_t k = 1; k + 1 < powers.size(); ++k) {
    all += powers[k];
    strongest = std::max(strongest, powers[k - 1] + powers[k] + powers[k + 1]);
  }
  return strongest / all;
}

/// The powers of the critical bands, moment by moment.
std::vector<std::vector<double>> bandsOf(const Signal& loop, double rate) {
  const Spectrogram moments = spectrogramOf(loop, rate, 0.025, 0.0125);
  std::vector<std::vector<double>> bands(kBands);
  for (const auto& frame : moments.frames) {
    const auto now = bandPowers(frame, moments.binHertz, {kBark.begin(), kBark.end()});
    for (std::size_t band = 0; band < kBands; ++band) bands[band].push_back(now[band]);
  }
  return bands;
}

double envelopeVariation(const std::vector<std::vector<double>>& bands) {
  double varied = 0, all = 1e-20;
  for (const auto& powers : bands) {
    const double power = meanOf(powers);
    std::vector<double> levels;
    for (const double value : powers) levels.push_back(std::sqrt(value));
    const double level = meanOf(levels);
    varied += power * std::sqrt(std::max(0.0, power - level * level)) / (level + 1e-12);
    all += power;
  }
  return varied / all;
}

double sharpness(const std::vector<std::vector<double>>& bands) {
  constexpr double kUnheard = 3e-5;  // of the power of all bands
  std::vector<double> powers;
  double whole = 0;
  for (const auto& band : bands) {
    powers.push_back(meanOf(band));
    whole += powers.back();
  }
  double weighted = 0, all = 1e-20;
  for (std::size_t band = 0; band < kBands; ++band) {
    const double bark = static_cast<double>(band) + 0.5;
    const double loudness = std::pow(powers[band] / whole + kUnheard, 0.25) - std::pow(kUnheard, 0.25);
    weighted += loudness * bark * (bark < 15.8 ? 1 : 0.15 * std::exp(0.42 * (bark - 15.8)) + 0.85);
    all += loudness;
  }
  return 0.11 * weighted / all;
}

}  // namespace

Figures figuresOf(const Signal& loop, double rate) {
  const auto bands = bandsOf(loop, rate);
  return {.roughness = roughness(loop, rate),
          .strongestLine = strongestLine(loop, rate),
          .envelopeVariation = envelopeVariation(bands),
          .sideEnergy = shareBetween(spectrogramOf(loop, rate, 0.025, 0.01), kSideFrom, rate),
          .sharpness = sharpness(bands)};
}

Signal withoutSilence(const Signal& loop, double rate) {
  constexpr double kQuiet = -35;  // dB below the loudest stretch
  const auto stretch = static_cast<std::size_t>(synth::framesOf(rate, 0.02));
  std::vector<double> powers;
  for (std::size_t at = 0; at < loop.size(); at += stretch) {
    double power = 0;
    const std::size_t end = std::min(loop.size(), at + stretch);
    for (std::size_t i = at; i < end; ++i) power += loop[i] * loop[i];
    powers.push_back(power / static_cast<double>(end - at));
  }
  const double least = std::pow(synth::gainOf(kQuiet), 2) * *std::max_element(powers.begin(), powers.end());
  Signal heard;
  for (std::size_t i = 0; i < loop.size(); ++i) {
    if (powers[i / stretch] > least) heard.push_back(loop[i]);
  }
  return heard;
}

}  // namespace vorn::hearing
