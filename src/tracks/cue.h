/// The cue of a segment. May call playback.
#pragma once

#include "tracks/track.h"

namespace vorn {

/// Starts the segment's cue, nearly silent, in place of the last one; from now
/// on `awarn` moves it along this segment. Does not wait.
void startCue(GameState& g, const Segment& segment);

}  // namespace vorn
