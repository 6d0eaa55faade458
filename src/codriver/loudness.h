/// How loud the kinds of sounds are and where they stand, as the player has set
/// it. With everything as it comes nothing changes. Pure.
#pragma once

#include <string>

#include "codriver/settings.h"

namespace vorn {

enum class SoundKind { kEngine, kCue, kWall, kCar, kCodriver };

/// Of the buffer in a state's slot of this name.
SoundKind kindOfSlot(const std::string& slot);

/// What a buffer is told in place of `volume`, hundredths of a decibel -10000 .. 0.
int heardVolume(const AidSettings& settings, SoundKind kind, int volume);
/// What it is told in place of `pan`, -10000 (left) .. 10000.
int heardPan(const AidSettings& settings, int pan);
/// What a loop is told in place of `hertz`, 100 .. 100000: for one ear the right is higher, the left lower.
int heardFrequency(const AidSettings& settings, int hertz, int pan);

}  // namespace vorn
