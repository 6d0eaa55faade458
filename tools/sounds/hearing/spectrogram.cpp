#include "spectrogram.h"

#include <fftw3.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace vorn::hearing {
namespace {

/// Turns windows of `frames` samples into power spectra.
class Transform {
 public:
  explicit Transform(int frames)
      : size_(static_cast<std::size_t>(frames)),
        in_(fftw_alloc_real(size_)),
        out_(fftw_alloc_complex(size_ / 2 + 1)),
        plan_(fftw_plan_dft_r2c_1d(frames, in_, out_, FFTW_ESTIMATE)) {
    for (std::size_t i = 0; i < size_; ++i) {
      window_.push_back(0.5 - 0.5 * std::cos(synth::kTwoPi * (static_cast<double>(i) + 0.5) / frames));
      norm_ += window_.back() * window_.back();
    }
  }
  ~Transform() {
    fftw_destroy_plan(plan_);
    fftw_free(out_);
    fftw_free(in_);
  }
  Transform(const Transform&) = delete;
  Transform& operator=(const Transform&) = delete;

  /// The stretch of the loop `signal` that starts at `first`.
  std::vector<double> powers(const Signal& signal, std::size_t first) {
    for (std::size_t i = 0; i < size_; ++i) in_[i] = window_[i] * signal[(first + i) % signal.size()];
    fftw_execute(plan_);
    std::vector<double> frame;
    for (std::size_t k = 0; k <= size_ / 2; ++k) {
      frame.push_back(2 * (out_[k][0] * out_[k][0] + out_[k][1] * out_[k][1]) /
                      (norm_ * static_cast<double>(size_)));
    }
    return frame;
  }

 private:
  std::size_t size_;
  double* in_;
  fftw_complex* out_;
  fftw_plan plan_;
  std::vector<double> window_;
  double norm_ = 0;
};

}  // namespace

Spectrogram spectrogramOf(const Signal& signal, double rate, double window, double hop) {
  const int frames = 2 * synth::framesOf(rate, window / 2);
  Transform transform(frames);
  Spectrogram spectrogram{rate / frames, hop, {}};
  const auto count = static_cast<int>(static_cast<double>(signal.size()) / (hop * rate));
  for (int i = 0; i < std::max(1, count); ++i) {
    spectrogram.frames.push_back(
        transform.powers(signal, static_cast<std::size_t>(synth::framesOf(rate, i * hop))));
  }
  return spectrogram;
}

std::vector<double> bandPowers(const std::vector<double>& frame, double binHertz,
                               const std::vector<double>& edges) {
  std::vector<double> powers;
  for (std::size_t band = 0; band + 1 < edges.size(); ++band) {
    // A bin on an edge belongs to both bands by its shares.
    const double from = edges[band] / binHertz + 0.5, to = edges[band + 1] / binHertz + 0.5;
    double sum = 0;
    const auto last = std::min(frame.size() - 1, static_cast<std::size_t>(to));
    for (auto bin = static_cast<std::size_t>(from); bin <= last; ++bin) {
      const double low = std::max(from, static_cast<double>(bin));
      const double high = std::min(to, static_cast<double>(bin) + 1);
      sum += frame[bin] * std::max(0.0, high - low);
    }
    powers.push_back(sum);
  }
  return powers;
}

std::vector<double> thirdOctaves(double lowest, double highest) {
  std::vector<double> edges;
  const double third = std::exp2(1.0 / 3);
  for (double middle = lowest; middle < 1.1 * highest; middle *= third) {
    edges.push_back(middle / std::sqrt(third));
  }
  edges.push_back(edges.back() * third);
  return edges;
}

std::vector<double> levelsIn(const std::vector<double>& bands, const Signal& signal, double rate,
                             double share) {
  const Spectrogram spectrogram = spectrogramOf(signal, rate, 0.05, 0.025);
  std::vector<std::vector<double>> powers(bands.size() - 1);
  for (const auto& frame : spectrogram.frames) {
    const std::vector<double> now = bandPowers(frame, spectrogram.binHertz, bands);
    for (std::size_t band = 0; band < now.size(); ++band) powers[band].push_back(now[band]);
  }
  std::vector<double> levels;
  for (const auto& band : powers) levels.push_back(10 * std::log10(percentile(band, share) + 1e-20));
  return levels;
}

double percentile(std::vector<double> values, double share) {
  const auto place =
      values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
  std::nth_element(values.begin(), place, values.end());
  return *place;
}

double shareBetween(const Spectrogram& spectrogram, double lowHertz, double highHertz) {
  double inside = 0, all = 0;
  for (const std::vector<double>& frame : spectrogram.frames) {
    for (std::size_t bin = 0; bin < frame.size(); ++bin) {
      const double hertz = static_cast<double>(bin) * spectrogram.binHertz;
      all += frame[bin];
      if (hertz >= lowHertz && hertz < highHertz) inside += frame[bin];
    }
  }
  return inside / all;
}

}  // namespace vorn::hearing
