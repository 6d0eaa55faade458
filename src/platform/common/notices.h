/// What a platform says by itself, in the same words wherever the game runs.
#pragma once

#include <string>

namespace vorn {

inline constexpr const char* kInBackground = " The window is in the background. ";
inline constexpr const char* kInFrontAgain = " The window is in front again. ";

inline constexpr const char* kControllerGone = " The controller is disconnected. ";
inline constexpr const char* kControllerBack = " The controller is connected again. ";
inline constexpr const char* kAnotherController =
    " A controller is connected. The game takes it when it starts again. ";

inline constexpr const char* kPedalsGone = " The pedals are disconnected. ";
inline constexpr const char* kPedalsBack = " The pedals are connected. ";

/// Of a sound device that is later than `kLateMs`: the game itself takes a fifth of it.
inline constexpr int kLateMs = 100;
inline std::string lateDevice(int milliseconds) {
  return " Your sound device is late: everything is heard " + std::to_string(milliseconds) +
         " milliseconds after it happens. One with a cable would be quicker. ";
}

}  // namespace vorn
