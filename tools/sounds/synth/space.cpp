#include "space.h"

#include "instruments.h"

namespace vorn::synth {

Signal inRoom(const Canvas& canvas, double ringing, double share) {
  Signal open = canvas.signal();
  open.resize(open.size() + static_cast<std::size_t>(framesOf(canvas.rate(), 1.5 * ringing)));
  Canvas round(canvas.rate(), canvas.frames(), canvas.ends());
  round.add(0, inRoom(open, canvas.rate(), ringing, share));
  return round.signal();
}

Signal withEchoes(const Canvas& canvas, double delay, double decibels, int count) {
  Canvas round(canvas.rate(), canvas.frames(), canvas.ends());
  for (int i = 0; i <= count; ++i) round.add(i * delay, canvas.signal(), gainOf(i * decibels));
  return round.signal();
}

}  // namespace vorn::synth
