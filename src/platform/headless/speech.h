/// Speech in virtual time: who says a text, how long it takes, and until when
/// the voice speaks. Nothing here waits.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/headless/virtual_clock.h"

namespace vorn {

/// One text as it is to be said; the settings are those of the moment of the request.
struct Utterance {
  std::string text;  ///< Windows-1252
  int rate;          ///< the speed goes by 3^(rate / 10)
  int volume;        ///< 0 .. 100
  int voice;         ///< index of an installed voice
};

/// Says texts one after the other.
class Speaker {
 public:
  virtual ~Speaker() = default;
  virtual std::vector<std::string> voices() const = 0;  ///< names of the installed voices
  /// Takes `utterance` behind what it has still to say. Returns how many milliseconds it takes, at least 1.
  virtual std::int64_t say(const Utterance& utterance) = 0;
  virtual void silence() = 0;  ///< forgets everything it has still to say
};

/// Milliseconds that the silent voice takes for `text`: 60 for each character
/// that is no blank, at rate 0; rates count within -10 .. 15. At least 1.
std::int64_t silentSpeechMs(const std::string& text, int rate);

/// The silent voice: it only takes its time.
class SilentSpeaker : public Speaker {
 public:
  explicit SilentSpeaker(int voiceCount) : voiceCount_(voiceCount) {}
  std::vector<std::string> voices() const override;
  std::int64_t say(const Utterance& utterance) override {
    return silentSpeechMs(utterance.text, utterance.rate);
  }
  void silence() override {}

 private:
  int voiceCount_;
};

/// The queue of what has been asked to be said.
class SpeechQueue {
 public:
  /// Neither is owned.
  SpeechQueue(const VirtualClock& clock, Speaker& speaker) : clock_(clock), speaker_(speaker) {}

  std::vector<std::string> voices() const { return speaker_.voices(); }
  void add(const Utterance& utterance);
  void clear();
  std::int64_t idleFrom() const {
    return idleFrom_;
  }  ///< when everything asked for has been said, in milliseconds
  bool isIdle() const { return clock_.now() >= idleFrom_; }

 private:
  const VirtualClock& clock_;
  Speaker& speaker_;
  std::int64_t idleFrom_ = 0;
};

}  // namespace vorn
