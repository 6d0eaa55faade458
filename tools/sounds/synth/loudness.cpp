#include "loudness.h"

#include <ebur128.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace vorn::synth {
namespace {

constexpr double kLoopListening = 10;  // seconds
constexpr double kMoment = 0.4;        // seconds

/// The measuring library's state for one recording.
class Meter {
 public:
  Meter(std::size_t channels, int rate, int mode)
      : state_(ebur128_init(static_cast<unsigned>(channels), static_cast<unsigned long>(rate), mode)) {
    if (state_ == nullptr) throw std::runtime_error("the loudness meter does not start");
  }
  ~Meter() { ebur128_destroy(&state_); }
  Meter(const Meter&) = delete;
  Meter& operator=(const Meter&) = delete;

  void hear(const Channels& channels, std::size_t from, std::size_t to) {
    std::vector<double> frames;
    frames.reserve((to - from) * channels.size());
    for (std::size_t i = from; i < to; ++i) {
      for (const Signal& channel : channels) frames.push_back(i < channel.size() ? channel[i] : 0);
    }
    ebur128_add_frames_double(state_, frames.data(), to - from);
  }

  double whole() {
    double lufs = kSilence;
    ebur128_loudness_global(state_, &lufs);
    return std::max(lufs, kSilence);
  }
  double last(double seconds) {
    double lufs = kSilence;
    ebur128_loudness_window(state_, static_cast<unsigned long>(std::lround(seconds * 1000)), &lufs);
    return std::max(lufs, kSilence);
  }

 private:
  ebur128_state* state_;
};

}  // namespace

double loudnessOfWhole(const Channels& channels, int rate, Ends ends) {
  Meter meter(channels.size(), rate, EBUR128_MODE_I);
  const std::size_t frames = channels.front().size();
  const int rounds = ends == Ends::kOpen
                         ? 1
                         : static_cast<int>(std::ceil(kLoopListening * rate / static_cast<double>(frames)));
  for (int i = 0; i < rounds; ++i) meter.hear(channels, 0, frames);
  return meter.whole();
}

double loudestMoment(const Channels& channels, int rate) {
  Meter meter(channels.size(), rate, EBUR128_MODE_M);
  const auto step = static_cast<std::size_t>(rate / 100);
  const std::size_t end = channels.front().size() + static_cast<std::size_t>(framesOf(rate, kMoment));
  double loudest = kSilence;
  for (std::size_t at = 0; at < end; at += step) {
    meter.hear(channels, at, at + step);
    loudest = std::max(loudest, meter.last(kMoment));
  }
  return loudest;
}

std::vector<double> loudnessAlong(const Signal& signal, int rate, double window, double step) {
  Meter meter(1, rate, EBUR128_MODE_M);
  const Channels channels{signal};
  std::vector<double> course;
  std::size_t heard = 0;
  for (double end = window; framesOf(rate, end) <= static_cast<int>(signal.size()); end += step) {
    const auto to = static_cast<std::size_t>(framesOf(rate, end));
    meter.hear(channels, heard, to);
    heard = to;
    course.push_back(meter.last(window));
  }
  return course;
}

Signal leveled(Signal signal, int rate, const Contour& lufs) {
  constexpr double kWindow = 0.2, kStep = 0.05;
  for (int round = 0; round < 3; ++round) {
    const std::vector<double> course = loudnessAlong(signal, rate, kWindow, kStep);
    std::vector<Point> gain;
    for (std::size_t i = 0; i < course.size(); ++i) {
      const double middle = kWindow / 2 + kStep * static_cast<double>(i);
      gain.push_back({middle, lufs(middle) - std::max(course[i], -70.0)});
    }
    const Contour line(std::move(gain));
    for (std::size_t i = 0; i < signal.size(); ++i) signal[i] *= gainOf(line(static_cast<double>(i) / rate));
  }
  return signal;
}

void limitPeaks(Channels& channels, double ceiling, int rate, Ends ends) {
  const auto size = static_cast<std::ptrdiff_t>(channels.front().size());
  const std::ptrdiff_t reach = std::max(8, framesOf(rate, 0.0015));
  const auto place = [size, ends](std::ptrdiff_t i) {
    return static_cast<std::size_t>(ends == Ends::kMeeting ? (i % size + size) % size
                                                           : std::clamp<std::ptrdiff_t>(i, 0, size - 1));
  };
  Signal needed(static_cast<std::size_t>(size), 1.0), lowest = needed;
  for (std::size_t i = 0; i < needed.size(); ++i) {
    double peak = 0;
    for (const Signal& channel : channels) peak = std::max(peak, std::abs(channel[i]));
    if (peak > ceiling) needed[i] = ceiling / peak;
  }
  for (std::ptrdiff_t i = 0; i < size; ++i) {
    if (needed[place(i)] == 1) continue;
    for (std::ptrdiff_t k = i - reach; k <= i + reach; ++k) {
      lowest[place(k)] = std::min(lowest[place(k)], needed[place(i)]);
    }
  }
  Signal window;
  for (std::ptrdiff_t k = -reach; k <= reach; ++k) {
    window.push_back(1 + std::cos(kPi * static_cast<double>(k) / static_cast<double>(reach + 1)));
  }
  double sum = 0;
  for (const double weight : window) sum += weight;
  for (std::ptrdiff_t i = 0; i < size; ++i) {
    double gain = 0;
    for (std::ptrdiff_t k = -reach; k <= reach; ++k) {
      gain += window[static_cast<std::size_t>(k + reach)] * lowest[place(i + k)];
    }
    for (Signal& channel : channels) channel[place(i)] *= gain / sum;
  }
}

Signal compressed(const Signal& signal, double rate, double thresholdDb, double ratio, double release) {
  const double fall = std::exp(-1 / (release * rate));
  const double rise = std::exp(-1 / (0.002 * rate));
  double envelope = 0;
  Signal result = signal;
  for (double& value : result) {
    const double now = std::abs(value);
    envelope = now + (envelope - now) * (now > envelope ? rise : fall);
    const double over = decibelsOf(std::max(envelope, 1e-9)) - thresholdDb;
    if (over > 0) value *= gainOf(-over * (1 - 1 / ratio));
  }
  return result;
}

}  // namespace vorn::synth
