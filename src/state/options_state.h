/// What `options/` owns: the player's choices, kept in vorn1ops.cfg. All are 0 until start-up fills them.
#pragma once

namespace vorn {

/// Values of the on/off options.
inline constexpr int kOn = 1;
inline constexpr int kOff = 2;

struct OptionsState {
  int wallSound = 0;         ///< 1 crowd, 2 nature, 3 wind
  int autoSpeedometer = 0;   ///< on / off
  int autoGearAnnounce = 0;  ///< on / off
  int pitRoadSnacks = 0;     ///< on / off
  int trackLightPolls = 0;   ///< on / off
  int engineSound = 0;       ///< 1 .. 6
};

}  // namespace vorn
