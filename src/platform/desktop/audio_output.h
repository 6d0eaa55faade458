/// The sound device: plays what the mixer renders until it is destroyed.
#pragma once

#include <SDL_audio.h>

#include "platform/mixing/mixer.h"

namespace vorn {

class AudioOutput {
 public:
  /// Opens the default device with a buffer of `frames` and begins to play. The
  /// mixer is not owned. Throws `DesktopUnavailable` where there is none.
  AudioOutput(Mixer& mixer, int frames);
  ~AudioOutput();
  AudioOutput(const AudioOutput&) = delete;
  AudioOutput& operator=(const AudioOutput&) = delete;

 private:
  SDL_AudioDeviceID device_ = 0;
};

}  // namespace vorn
