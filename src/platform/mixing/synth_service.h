/// An embedded voice: a thread of its own has texts synthesised, the mixer's voice
/// stream makes them heard.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/common/speech_service.h"
#include "platform/common/speech_synth.h"
#include "platform/common/watchdog.h"
#include "platform/mixing/voice_stream.h"

namespace vorn {

class SynthService : public SpeechService {
 public:
  /// Neither is owned. `patience`: how long speech may make no sound though it should.
  SynthService(SpeechSynth& synth, VoiceStream& stream,
               std::chrono::milliseconds patience = std::chrono::seconds(5));
  ~SynthService() override;

  std::vector<std::string> voices() override { return synth_.voices(); }
  /// Throws `PlatformError` where there are no voices.
  void say(const std::string& text, const SpeechSettings& settings) override;
  void purge() override;
  /// When patience is at its end speech is given up: silenced, and said to be so on standard error.
  bool isSpeaking() override;

 private:
  struct Request {
    Utterance utterance;
    std::uint32_t ticket;
  };

  void work();
  void utter(const Request& request);
  bool pass(std::span<const std::int16_t> samples, std::uint32_t ticket);
  bool isBusy();

  SpeechSynth& synth_;
  VoiceStream& stream_;
  const std::chrono::milliseconds patience_;
  Watchdog watchdog_;

  std::mutex mutex_;  ///< over what follows
  std::condition_variable changed_;
  std::deque<Request> queue_;
  bool isUttering_ = false;  ///< something of the present ticket
  bool isEnding_ = false;

  std::thread worker_;
};

}  // namespace vorn
