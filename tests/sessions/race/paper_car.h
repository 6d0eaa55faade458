/// The car of the Maple Leaf Tri Oval worked out by hand, tick by tick, from the
/// rules as they are written down and not from the game's code: what the next
/// tick must be, given the last one and what the driver does.
#pragma once

#include <optional>

#include "platform/platform.h"

namespace vorn {

/// What the driver holds during a tick.
struct Hands {
  std::optional<int> pedal;  ///< -10000 full gas .. 10000 full brake; none: a keyboard
  bool gasKey = false, brakeKey = false, leftKey = false, rightKey = false;
};

/// What is heard of a tick.
struct PaperSounds {
  int cueVolume, cuePan;
  int engineHertz;
  int wallLeftPan, wallRightPan, wallLeftVolume, wallRightVolume;
  int tyreVolume;
};

struct PaperTick {
  TickReport car;
  PaperSounds sounds;
};

/// The tick after `last`. Of `seen`, the tick that was traced, only the segment,
/// the gear and the reading of the wheel are taken.
PaperTick nextTick(const TickReport& last, const TickReport& seen, const Hands& hands);

}  // namespace vorn
