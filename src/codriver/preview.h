/// Preview a track: the built-in driver drives a lap of it, and the co-driver says each segment before it
/// comes.
#pragma once

#include "codriver/menu.h"

namespace vorn {

/// Asks for the track and the pace, and drives. Any key and any button stops the lap; Escape in a menu
/// leaves. Waits.
void previewTracks(Cabin& cabin);

}  // namespace vorn
