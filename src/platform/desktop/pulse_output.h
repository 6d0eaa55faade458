/// The sound server of most desktops: PulseAudio, or PipeWire in its place. Beside
/// what SDL can do with it the buffer grows without a gap, sleeps while nothing
/// sounds, and the server tells how late its device is.
#pragma once

#include <string>
#include <vector>

#include "platform/desktop/audio_line.h"

namespace vorn {

/// Opens a device of the server, which the line is told of, and plays until it
/// fails or the game ends. Returns whether there is a server; it may be without a device.
bool playThroughPulse(AudioLine& line);

/// The server's devices as `AudioWishes` takes them; none where there is no server. Waits for it, five
/// seconds at most.
std::vector<std::string> pulseDevices();

}  // namespace vorn
