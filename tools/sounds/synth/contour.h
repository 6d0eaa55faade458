/// How a quantity moves with time: a constant, a line through points, or any
/// function of the seconds since the start.
#pragma once

#include <concepts>
#include <functional>
#include <initializer_list>
#include <vector>

namespace vorn::synth {

/// A value at a moment.
struct Point {
  double seconds;
  double value;
};

class Contour {
 public:
  Contour(double constant);
  /// Straight lines from point to point; constant before the first and behind
  /// the last.
  Contour(std::initializer_list<Point> points);
  explicit Contour(std::vector<Point> points);
  template <typename F>
  requires(std::invocable<const F&, double> && !std::same_as<std::remove_cvref_t<F>, Contour>)
      Contour(F function)
      : function_(std::move(function)) {}

  double operator()(double seconds) const { return function_(seconds); }

 private:
  std::function<double(double)> function_;
};

/// Through the points in equal ratios, as pitches move. Values above 0.
Contour glide(std::vector<Point> points);

/// `base` with a sine of `hertz` on it, `depth` as a share of the value.
Contour vibrato(Contour base, double hertz, double depth);

/// Rises in `attack` seconds, holds, falls over the last `release` of `seconds`.
Contour swell(double attack, double release, double seconds);

/// Rises in `attack` seconds, then falls by 60 dB in `decay`.
Contour ringing(double attack, double decay);

}  // namespace vorn::synth
