#include "canvas.h"

#include <algorithm>

namespace vorn::synth {

void Canvas::add(double seconds, const Signal& event, double gain) {
  const auto size = static_cast<std::ptrdiff_t>(signal_.size());
  std::ptrdiff_t place = framesOf(rate_, seconds);
  if (ends_ == Ends::kMeeting) place = (place % size + size) % size;
  for (const double value : event) {
    if (ends_ == Ends::kMeeting && place == size) place = 0;
    if (place >= 0 && place < size) signal_[static_cast<std::size_t>(place)] += gain * value;
    ++place;
  }
}

std::vector<double> scattered(Noise& noise, int count, double seconds, double gap) {
  const double room = seconds - count * std::min(gap, 0.9 * seconds / count);
  std::vector<double> moments;
  for (int i = 0; i < count; ++i) moments.push_back(noise.between(0, room));
  std::sort(moments.begin(), moments.end());
  const double spacing = (seconds - room) / count;
  for (int i = 0; i < count; ++i) moments[static_cast<std::size_t>(i)] += i * spacing;
  return moments;
}

}  // namespace vorn::synth
