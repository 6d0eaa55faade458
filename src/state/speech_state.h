/// What `speech/` owns: the voice and its settings.
#pragma once

#include <array>
#include <memory>

#include "platform/voice.h"

namespace vorn {

struct SpeechState {
  std::unique_ptr<Voice> speechVoice;
  int voiceIndex = 0;      ///< 0 .. lastVoiceIndex
  int lastVoiceIndex = 0;  ///< number of installed voices - 1
  int speechRate = 0;      ///< any number; the voice clamps what it cannot do
  int voiceVolume = 90;    ///< 0 .. 100, steps of 5

  /// Entry k (1..10): 1 once the mark of 25 x k mph has been announced and speed has not fallen below it
  /// since.
  std::array<int, 12> speedMarkSaid{};
};

}  // namespace vorn
