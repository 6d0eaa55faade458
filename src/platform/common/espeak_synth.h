/// The embedded speech synthesiser, eSpeak NG: Windows-1252 text in, sound out.
/// It works many times faster than the text takes to be heard and knows neither
/// mixer nor device. One thread at a time is served, another one waits for it.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "platform/common/speech_settings.h"

namespace vorn {

/// The speed for `rate`: 175 words a minute for 0, held within what the
/// synthesiser can do (80 .. 900).
int wordsAMinute(int rate);

class EspeakSynth {
 public:
  /// Takes the next samples, mono; false: no more are wanted.
  using Sink = std::function<bool(std::span<const std::int16_t> samples)>;

  /// Whether this program carries it at all.
  static bool isCarried();

  /// Never fails: where the library cannot start there are no voices.
  EspeakSynth();

  /// Their names, English first, without variants.
  const std::vector<std::string>& voices() const { return voices_; }
  int sampleRate() const { return sampleRate_; }  ///< hertz
  /// Why there are no voices.
  const std::string& problem() const { return problem_; }

  /// Speaks `text` into `sink`, in pieces of some 20 ms of sound, and returns when
  /// it is done or the sink wants no more. It begins with the first sound: the
  /// silence before is left out. Control characters count as blanks.
  /// Throws `PlatformError` where the voice is none of `voices`.
  void speak(const std::string& text, const SpeechSettings& settings, const Sink& sink);

 private:
  std::vector<std::string> voices_;
  int sampleRate_ = 0;
  std::string problem_;
};

}  // namespace vorn
