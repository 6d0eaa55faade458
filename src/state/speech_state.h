/// What `speech/` owns: the voice and its settings.
#pragma once

#include <array>
#include <memory>

#include "platform/voice.h"

namespace vorn {

/// What the player's files keep.
enum class Kept { kLog, kRecord, kSettings };
inline constexpr std::size_t kKinds = 3;
/// How it stands with what could not be kept of one kind.
enum class Loss { kNone, kToBeTold, kTold };

struct SpeechState {
  std::unique_ptr<Voice> speechVoice;
  int voiceIndex = 0;      ///< 0 .. lastVoiceIndex
  int lastVoiceIndex = 0;  ///< number of installed voices - 1
  int speechRate = 0;      ///< any number; the voice clamps what it cannot do
  int voiceVolume = 90;    ///< 0 .. 100, steps of 5

  std::array<Loss, kKinds> losses{};  ///< in this run, by `Kept`

  /// Entry k (1..10): 1 once the mark of 25 x k mph has been announced and speed has not fallen below it
  /// since.
  std::array<int, 12> speedMarkSaid{};
};

}  // namespace vorn
