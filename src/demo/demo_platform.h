/// The demonstration: the whole game on another platform, with the built-in
/// driver at the controls instead of the player. Sound, voice and clock are the
/// other platform's; what is said also goes to a stream as captions; nothing is written to the player's
/// files.
#pragma once

#include <iosfwd>
#include <memory>

#include "platform/platform.h"

namespace vorn {

/// A platform on top of `inner` (not owned), for a race on track 1 .. 10. Escape or
/// closing the window ends the demonstration.
std::unique_ptr<Platform> makeDemoPlatform(Platform& inner, int track, std::ostream& captions);

}  // namespace vorn
