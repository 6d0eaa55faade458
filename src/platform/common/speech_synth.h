/// A speech synthesiser: Windows-1252 text in, sound out. It works many times faster
/// than the text takes to be heard and knows neither mixer nor device.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "platform/common/speech_settings.h"

namespace vorn {

/// The speed for `rate`: 175 words a minute for 0, held within what eSpeak NG
/// can do (80 .. 900).
int wordsAMinute(int rate);

/// A voice as eSpeak NG lists it.
struct SynthVoice {
  std::string name;        ///< for the player
  std::string identifier;  ///< for the synthesiser
  std::string language;    ///< the first of its languages, as in "en-us"
  int priority;            ///< of that language; the lower the better
};

class SpeechSynth {
 public:
  /// Takes the next samples, mono; false: no more are wanted.
  using Sink = std::function<bool(std::span<const std::int16_t> samples)>;

  virtual ~SpeechSynth() = default;
  SpeechSynth(const SpeechSynth&) = delete;
  SpeechSynth& operator=(const SpeechSynth&) = delete;

  /// Their names, English first, without variants.
  const std::vector<std::string>& voices() const { return names_; }
  int sampleRate() const { return sampleRate_; }  ///< hertz
  /// Why there are no voices.
  const std::string& problem() const { return problem_; }

  /// Speaks `text` into `sink`, piece by piece, and returns when it is done or the
  /// sink wants no more. It begins with the first sound: the silence before is left
  /// out. Control characters count as blanks.
  /// Throws `PlatformError` where the voice is none of `voices`.
  void speak(const std::string& text, const SpeechSettings& settings, const Sink& sink);

 protected:
  /// What is to be said, in the synthesiser's own terms.
  struct Order {
    std::string text;   ///< UTF-8
    std::string voice;  ///< its identifier
    int wordsAMinute;
    int volume;  ///< 0 .. 100
  };

  /// `problem`: why there are no voices.
  SpeechSynth(int sampleRate, std::vector<SynthVoice> voices, std::string problem);

 private:
  /// From the first sample on, silent or not; returns as `speak` does.
  virtual void synthesise(const Order& order, const Sink& sink) = 0;

  int sampleRate_;
  std::string problem_;
  std::vector<std::string> names_, identifiers_;
};

}  // namespace vorn
