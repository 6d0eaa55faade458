/// The sound device through SDL, which knows every other way to one than the sound server.
#pragma once

#include <string>
#include <vector>

#include "platform/desktop/audio_line.h"

namespace vorn {

/// Opens a device, which the line is told of, and plays until it fails, the game
/// ends or the buffer has grown. `driver`: SDL's name; empty for the first that
/// works, whose name it then becomes. Each call may hang together with the device.
void playThroughSdl(AudioLine& line, std::string& driver);

/// The devices of SDL's first driver that works as `AudioWishes` takes them.
std::vector<std::string> sdlDevices();

}  // namespace vorn
