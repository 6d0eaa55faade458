/// The sound device of a backend whose sounds go through the mixer.
#pragma once

#include <memory>
#include <span>
#include <string>

#include "platform/files.h"
#include "platform/mixing/mixer.h"
#include "platform/sound_device.h"

namespace vorn {

class MixerSoundDevice : public SoundDevice {
 public:
  /// Neither is owned.
  MixerSoundDevice(Mixer& mixer, Files& files) : mixer_(mixer), files_(files) {}

  void SetCooperativeLevel(int) override {}  // the sound of a player's machine is always shared
  std::unique_ptr<SoundBuffer> CreateSoundBufferFromFile(const std::string&, const std::string& fileName,
                                                         int) override {
    return mixer_.createBuffer(
        std::make_shared<const Recording>(readWav(fileName, files_.readSound(fileName))));
  }
  std::unique_ptr<SoundBuffer> CreateSoundBufferFromSamples(const std::string&, const std::string&,
                                                            std::span<const float> samples,
                                                            int hertz) override {
    return mixer_.createBuffer(std::make_shared<const Recording>(recordingOf(samples, hertz)));
  }

 private:
  Mixer& mixer_;
  Files& files_;
};

}  // namespace vorn
