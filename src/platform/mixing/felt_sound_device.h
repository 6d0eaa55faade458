/// The mixer's sound device, through which a crash is felt as well.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/common/rumble.h"
#include "platform/mixing/mixer_sound_device.h"

namespace vorn {

class FeltSoundDevice : public MixerSoundDevice {
 public:
  using Feel = std::function<void(const std::optional<Rumble>&)>;

  /// `feel` gets what the sound of each file that is loaded lets be felt. Mixer and files are not owned.
  FeltSoundDevice(Mixer& mixer, Files& files, Feel feel)
      : MixerSoundDevice(mixer, files), feel_(std::move(feel)) {}

  std::unique_ptr<SoundBuffer> CreateSoundBufferFromFile(const std::string& slot, const std::string& fileName,
                                                         int flags) override {
    feel_(RumbleSense::sound(fileName));
    return MixerSoundDevice::CreateSoundBufferFromFile(slot, fileName, flags);
  }

 private:
  Feel feel_;
};

}  // namespace vorn
