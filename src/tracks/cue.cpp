#include "tracks/cue.h"

#include "sound/playback.h"

namespace vorn {

void startCue(GameState& g, const Segment& segment) {
  g.warnDistance = cueLength(segment);
  g.warnScale = segment.scale;
  g.warnPan = segment.pan;
  startwarn(g, segment.cue);
}

}  // namespace vorn
