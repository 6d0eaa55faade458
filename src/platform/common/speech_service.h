/// Something that says texts one after the other. All procedures are for one
/// thread, the game's; where nothing else stands none of them waits.
#pragma once

#include <string>
#include <vector>

#include "platform/common/speech_settings.h"

namespace vorn {

/// A text, Windows-1252, and how it is to be said.
struct Utterance {
  std::string text;
  SpeechSettings settings;
};

class SpeechService {
 public:
  virtual ~SpeechService() = default;
  SpeechService(const SpeechService&) = delete;
  SpeechService& operator=(const SpeechService&) = delete;

  /// Their names in UTF-8, the likeliest first; the same from the first call on.
  virtual std::vector<std::string> voices() = 0;
  /// Says `text` behind what is still to be said.
  virtual void say(const std::string& text, const SpeechSettings& settings) = 0;
  /// Silences everything at once.
  virtual void purge() = 0;
  /// True from `say` on until the last sound has been heard.
  virtual bool isSpeaking() = 0;

 protected:
  SpeechService() = default;
};

/// A service that may leave its players alone.
class FallibleService : public SpeechService {
 public:
  /// From the moment on at which it is missing, gone or mute, for good. To be asked often.
  virtual bool hasFailed() = 0;
  /// What has been asked for and not been said to its end, the oldest first.
  virtual std::vector<Utterance> unsaid() = 0;
  /// What went wrong, for standard error.
  virtual std::string problem() = 0;
};

}  // namespace vorn
