#include "fingerprint.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "spectrogram.h"

namespace vorn::hearing {
namespace {

using synth::Signal;

constexpr double kWindow = 0.025, kHop = 0.010;  // seconds
constexpr int kMelBands = 26;
constexpr int kCepstra = 13;
constexpr double kLowest = 100, kHighest = 7600;  // hertz; every file's rate carries that
constexpr double kQuietest = 1e-5;                // of the mean power: what is less is silence
constexpr double kRhythmSeconds = 12;
constexpr std::array kRhythmEdges{0.75, 1.5, 2.5, 4.0, 6.0, 9.0, 13.0, 20.0, 30.0};  // hertz

double melOf(double hertz) {
  return 1127 * std::log(1 + hertz / 700);
}

std::vector<double> melEdges() {
  std::vector<double> edges;
  for (int i = 0; i <= kMelBands; ++i) {
    const double mel = melOf(kLowest) + (melOf(kHighest) - melOf(kLowest)) * i / kMelBands;
    edges.push_back(700 * (std::exp(mel / 1127) - 1));
  }
  return edges;
}

/// Mel cepstrum of one moment: the shape of its spectrum, from coarse to fine.
std::vector<double> cepstrum(const std::vector<double>& bands, double floor) {
  std::vector<double> logs, result;
  for (const double power : bands) logs.push_back(std::log(power + floor));
  for (int k = 1; k <= kCepstra; ++k) {
    double sum = 0;
    for (int band = 0; band < kMelBands; ++band) {
      sum += logs[static_cast<std::size_t>(band)] * std::cos(synth::kPi * k * (band + 0.5) / kMelBands);
    }
    result.push_back(sum / kMelBands);
  }
  return result;
}

double sumOf(const std::vector<double>& values) {
  double sum = 0;
  for (const double value : values) sum += value;
  return sum;
}

/// Weighted mean and deviation of one number over all moments.
void appendStatistics(Fingerprint& print, const std::vector<double>& values,
                      const std::vector<double>& weights) {
  double mean = 0, square = 0;
  const double all = sumOf(weights);
  for (std::size_t i = 0; i < values.size(); ++i) {
    mean += weights[i] * values[i] / all;
    square += weights[i] * values[i] * values[i] / all;
  }
  print.push_back(mean);
  print.push_back(std::sqrt(std::max(0.0, square - mean * mean)));
}

/// Powers between `edges` (hertz) of how a loudness moves, relative to its mean.
std::vector<double> movementOf(const std::vector<double>& powers, const std::vector<double>& edges) {
  Signal envelope;
  while (static_cast<double>(envelope.size()) * kHop < kRhythmSeconds) {
    for (const double power : powers) envelope.push_back(std::sqrt(power));
  }
  const double mean = sumOf(envelope) / static_cast<double>(envelope.size());
  for (double& value : envelope) value = value / mean - 1;
  const double whole = static_cast<double>(envelope.size()) * kHop;
  const Spectrogram spectrum = spectrogramOf(envelope, 1 / kHop, whole, whole);
  return bandPowers(spectrum.frames.front(), spectrum.binHertz, edges);
}

}  // namespace

Fingerprint fingerprintOf(const Signal& loop, double rate) {
  const Spectrogram spectrogram = spectrogramOf(loop, rate, kWindow, kHop);
  const std::vector<double> edges = melEdges();
  std::vector<std::vector<double>> moments;
  std::vector<double> powers, brightness;
  for (const std::vector<double>& frame : spectrogram.frames) {
    moments.push_back(bandPowers(frame, spectrogram.binHertz, edges));
    powers.push_back(sumOf(moments.back()));
  }
  const double mean = sumOf(powers) / static_cast<double>(powers.size());
  std::vector<double> weights;
  std::vector<std::vector<double>> cepstra(kCepstra);
  for (std::size_t i = 0; i < moments.size(); ++i) {
    // What is loud is what one goes by.
    weights.push_back(std::pow(powers[i] / mean, 0.3) + 1e-3);
    const std::vector<double> shape = cepstrum(moments[i], kQuietest * mean);
    for (std::size_t k = 0; k < shape.size(); ++k) cepstra[k].push_back(shape[k]);
    double weighted = 0;
    for (std::size_t band = 0; band < moments[i].size(); ++band) {
      weighted += static_cast<double>(band) * moments[i][band];
    }
    brightness.push_back(weighted / (powers[i] + kQuietest * mean));
  }
  Fingerprint print;
  for (const std::vector<double>& values : cepstra) appendStatistics(print, values, weights);
  appendStatistics(print, brightness, weights);
  for (const double power : movementOf(powers, {kRhythmEdges.begin(), kRhythmEdges.end()})) {
    print.push_back(std::sqrt(power));
  }
  return print;
}

std::vector<double> movement(const Signal& loop, double rate, const std::vector<double>& edges) {
  std::vector<double> powers;
  for (const std::vector<double>& frame : spectrogramOf(loop, rate, kWindow, kHop).frames) {
    powers.push_back(sumOf(frame));
  }
  return movementOf(powers, edges);
}

Scaling::Scaling(const std::vector<Fingerprint>& all)
    : mean_(all.front().size()), deviation_(all.front().size()) {
  const auto count = static_cast<double>(all.size());
  for (const Fingerprint& print : all) {
    for (std::size_t i = 0; i < print.size(); ++i) mean_[i] += print[i] / count;
  }
  for (const Fingerprint& print : all) {
    for (std::size_t i = 0; i < print.size(); ++i) {
      deviation_[i] += (print[i] - mean_[i]) * (print[i] - mean_[i]) / count;
    }
  }
  for (double& value : deviation_) value = std::sqrt(value) + 1e-9;
}

Fingerprint Scaling::scaled(Fingerprint fingerprint) const {
  for (std::size_t i = 0; i < fingerprint.size(); ++i) {
    fingerprint[i] = (fingerprint[i] - mean_[i]) / deviation_[i];
  }
  return fingerprint;
}

double distance(const Fingerprint& one, const Fingerprint& other) {
  double sum = 0;
  for (std::size_t i = 0; i < one.size(); ++i) sum += (one[i] - other[i]) * (one[i] - other[i]);
  return std::sqrt(sum / static_cast<double>(one.size()));
}

Distances::Distances(const std::map<int, Fingerprint>& raw) {
  std::vector<Fingerprint> all;
  for (const auto& [sound, print] : raw) all.push_back(print);
  const Scaling scaling(all);
  for (const auto& [sound, print] : raw) scaled_[sound] = scaling.scaled(print);
  std::vector<double> values;
  for (const auto& [one, first] : scaled_) {
    for (const auto& [other, second] : scaled_) {
      if (one < other) values.push_back(distance(first, second));
    }
  }
  median_ = percentile(values, 0.5);
}

double Distances::operator()(int one, int other) const {
  return distance(scaled_.at(one), scaled_.at(other)) / median_;
}

}  // namespace vorn::hearing
