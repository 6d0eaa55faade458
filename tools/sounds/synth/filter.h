/// Filters that may move while they sound, for one-shots and for loops.
#pragma once

#include "contour.h"
#include "signal.h"

namespace vorn::synth {

/// A second-order filter whose frequency may change at any sample without a
/// click. One tick gives all its outputs.
class Resonator {
 public:
  explicit Resonator(double rate) : rate_(rate) {}

  /// `hertz` below half the rate; `quality` 0.5 (dull) .. 100 (ringing).
  void tune(double hertz, double quality);
  void tick(double input);

  double low() const { return low_; }
  double high() const { return high_; }
  /// Unity gain at its frequency.
  double band() const { return band_ * damping_; }

 private:
  double rate_;
  double g_ = 0, damping_ = 1, scale_ = 1;
  double first_ = 0, second_ = 0;
  double low_ = 0, band_ = 0, high_ = 0;
};

/// Whether a signal ends (silence before it) or is a loop (its end before it).
enum class Ends { kOpen, kMeeting };

/// `signal` through a filter. With `Ends::kMeeting` the filter has heard the
/// loop before, so that the result meets itself.
Signal lowpass(const Signal& signal, double rate, const Contour& hertz, double quality = 0.707,
               Ends ends = Ends::kOpen);
Signal highpass(const Signal& signal, double rate, const Contour& hertz, double quality = 0.707,
                Ends ends = Ends::kOpen);
Signal bandpass(const Signal& signal, double rate, const Contour& hertz, const Contour& quality,
                Ends ends = Ends::kOpen);
/// Two lowpasses or highpasses in a row: 24 dB an octave.
Signal steepLowpass(const Signal& signal, double rate, double hertz, Ends ends = Ends::kOpen);
Signal steepHighpass(const Signal& signal, double rate, double hertz, Ends ends = Ends::kOpen);
/// The band around `hertz` raised or lowered by `decibels`.
Signal peaking(const Signal& signal, double rate, double hertz, double quality, double decibels,
               Ends ends = Ends::kOpen);

/// All above about 1.8 kHz raised by `decibels`: what carries over engines and tells a side at once.
Signal brightened(const Signal& signal, double rate, double decibels, Ends ends = Ends::kOpen);

}  // namespace vorn::synth
