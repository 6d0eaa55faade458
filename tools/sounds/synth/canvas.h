/// The stretch of time a sound is put together on.
#pragma once

#include "contour.h"
#include "filter.h"
#include "noise.h"
#include "signal.h"

namespace vorn::synth {

/// A fixed number of samples that events are mixed into. On a canvas whose ends
/// meet, what runs over the end goes on at the start, so the loop has no seam.
class Canvas {
 public:
  Canvas(double rate, int frames, Ends ends)
      : rate_(rate), ends_(ends), signal_(static_cast<std::size_t>(frames)) {}

  /// Mixes `event` in, beginning at `seconds` (on an open canvas what lies
  /// outside is lost; on a meeting one any time is fine).
  void add(double seconds, const Signal& event, double gain = 1);
  /// Mixes in a signal as long as the canvas.
  void add(const Signal& bed, double gain = 1) { mixInto(signal_, bed, gain); }

  double rate() const { return rate_; }
  double seconds() const { return static_cast<double>(signal_.size()) / rate_; }
  int frames() const { return static_cast<int>(signal_.size()); }
  Ends ends() const { return ends_; }
  const Signal& signal() const { return signal_; }

 private:
  double rate_;
  Ends ends_;
  Signal signal_;
};

/// `count` moments spread over `seconds` at random, in order, at least `gap`
/// seconds apart, also around the end. `gap` is cut to what fits.
std::vector<double> scattered(Noise& noise, int count, double seconds, double gap);

}  // namespace vorn::synth
