#include "platform/voice.h"

#include "platform/errors.h"

namespace vorn {

void Voice::setVoice(int index) {
  const auto count = static_cast<int>(GetVoices().size());
  if (index < 0 || index >= count) {
    throw PlatformError("Voice", std::to_string(index), "there are " + std::to_string(count) + " voices");
  }
  doSetVoice(index);
}

void Voice::setVolume(int volume) {
  if (volume < 0 || volume > 100) {
    throw PlatformError("Volume", std::to_string(volume), "out of range 0 to 100");
  }
  doSetVolume(volume);
}

}  // namespace vorn
