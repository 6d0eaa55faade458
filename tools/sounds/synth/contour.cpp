#include "contour.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "signal.h"

namespace vorn::synth {
namespace {

template <typename Blend>
double through(const std::vector<Point>& points, double seconds, Blend blend) {
  const auto next = std::find_if(points.begin(), points.end(),
                                 [seconds](const Point& point) { return point.seconds > seconds; });
  if (next == points.begin()) return points.front().value;
  if (next == points.end()) return points.back().value;
  const Point& from = *(next - 1);
  return blend(from.value, next->value, (seconds - from.seconds) / (next->seconds - from.seconds));
}

}  // namespace

Contour::Contour(double constant) : function_([constant](double) { return constant; }) {}

Contour::Contour(std::initializer_list<Point> points) : Contour(std::vector<Point>(points)) {}

Contour::Contour(std::vector<Point> points)
    : function_([points = std::move(points)](double seconds) {
        return through(points, seconds, [](double a, double b, double share) { return a + (b - a) * share; });
      }) {}

Contour glide(std::vector<Point> points) {
  return [points = std::move(points)](double seconds) {
    return through(points, seconds,
                   [](double a, double b, double share) { return a * std::pow(b / a, share); });
  };
}

Contour vibrato(Contour base, double hertz, double depth) {
  return [base = std::move(base), hertz, depth](double seconds) {
    return base(seconds) * (1 + depth * std::sin(kTwoPi * hertz * seconds));
  };
}

Contour swell(double attack, double release, double seconds) {
  return Contour{{0, 0}, {attack, 1}, {std::max(attack, seconds - release), 1}, {seconds, 0}};
}

Contour ringing(double attack, double decay) {
  return [attack, decay](double seconds) {
    return std::min(1.0, seconds / attack) * std::pow(10.0, -3 * std::max(0.0, seconds - attack) / decay);
  };
}

}  // namespace vorn::synth
