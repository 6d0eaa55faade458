#include "tunes.h"

#include "tones.h"

namespace vorn::synth {

void play(Canvas& canvas, std::span<const Written> notes, double beats, const Player& player, double lead) {
  const double beat = canvas.seconds() / beats;
  for (const Written& written : notes) {
    canvas.add(lead + written.beat * beat, player(noteHertz(written.note), written.beats * beat),
               written.loud);
  }
}

}  // namespace vorn::synth
