#include "instruments.h"

#include <stk/NRev.h>
#include <stk/Plucked.h>
#include <stk/Shakers.h>
#include <stk/Stk.h>

#include <cstdlib>

namespace vorn::synth {
namespace {

constexpr double kLowestNote = 50;  // hertz; sets the length of the string

/// The toolkit's noise sources seed `rand` from the time when they are made,
/// so the seed is set once the instrument stands.
void seedToolkit(Noise& noise) {
  std::srand(static_cast<unsigned>(noise.below(0x7FFFFFFF)));
}

Signal play(Noise& noise, double rate, const Note& note, stk::Instrmnt& instrument) {
  seedToolkit(noise);
  const int held = framesOf(rate, note.seconds);
  Signal signal(static_cast<std::size_t>(held + framesOf(rate, note.ring)));
  instrument.noteOn(note.hertz, note.force);
  for (std::size_t i = 0; i < signal.size(); ++i) {
    if (static_cast<int>(i) == held) instrument.noteOff(0.5);
    signal[i] = instrument.tick();
  }
  fadeOut(signal, framesOf(rate, 0.01));
  return signal;
}

}  // namespace

void tuneToolkit(double rate) {
  stk::Stk::setSampleRate(rate);
  stk::Stk::showWarnings(false);
}

Signal plucked(Noise& noise, double rate, const Note& note) {
  stk::Plucked instrument(kLowestNote);
  return play(noise, rate, note, instrument);
}

Signal shaken(Noise& noise, double rate, Shaker kind, double energy, double seconds) {
  stk::Shakers instrument(static_cast<int>(kind));
  seedToolkit(noise);
  Signal signal(static_cast<std::size_t>(framesOf(rate, seconds)));
  instrument.controlChange(128, energy * 128);
  for (double& value : signal) value = instrument.tick();
  fadeOut(signal, framesOf(rate, 0.02));
  return signal;
}

Signal inRoom(const Signal& signal, double rate, double ringing, double share, Ends ends) {
  tuneToolkit(rate);
  stk::NRev room(ringing);
  room.setEffectMix(share);
  Signal result(signal.size());
  for (int pass = ends == Ends::kMeeting ? 0 : 1; pass < 2; ++pass) {
    for (std::size_t i = 0; i < signal.size(); ++i) result[i] = room.tick(signal[i]);
  }
  return result;
}

}  // namespace vorn::synth
