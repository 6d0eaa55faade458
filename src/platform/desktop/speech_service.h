/// Says texts one after the other: a thread of its own synthesises them, the
/// mixer's voice stream makes them heard. All procedures are for one thread, the
/// game's, and none of them waits.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

#include "platform/common/espeak_synth.h"
#include "platform/desktop/watchdog.h"
#include "platform/mixing/voice_stream.h"

namespace vorn {

class SpeechService {
 public:
  /// Neither is owned. `patience`: how long speech may make no sound though it should.
  SpeechService(EspeakSynth& synth, VoiceStream& stream,
                std::chrono::milliseconds patience = std::chrono::seconds(5));
  ~SpeechService();
  SpeechService(const SpeechService&) = delete;
  SpeechService& operator=(const SpeechService&) = delete;

  /// Says `text` behind what is still to be said.
  void say(const std::string& text, const SpeechSettings& settings);
  /// The same, as the last text was said.
  void say(const std::string& text) { say(text, lastSettings_); }
  /// Silences everything at once.
  void purge();
  /// True from `say` on until the last sample has been heard. When patience is at
  /// its end speech is given up: silenced, and said to be so on standard error.
  bool isSpeaking();

 private:
  struct Utterance {
    std::string text;
    SpeechSettings settings;
    std::uint32_t ticket;
  };

  void work();
  void utter(const Utterance& utterance);
  bool pass(std::span<const std::int16_t> samples, std::uint32_t ticket);
  bool isBusy();

  EspeakSynth& synth_;
  VoiceStream& stream_;
  Watchdog watchdog_;
  SpeechSettings lastSettings_;

  std::mutex mutex_;  ///< over what follows
  std::condition_variable changed_;
  std::deque<Utterance> queue_;
  bool isUttering_ = false;  ///< something of the present ticket
  bool isEnding_ = false;

  std::thread worker_;
};

}  // namespace vorn
