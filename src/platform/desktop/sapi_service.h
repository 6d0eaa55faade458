/// The voices of Windows, by SAPI 5. A thread of its own talks to them, so a voice
/// that takes its time does not keep the game.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/common/speech_service.h"
#include "platform/common/watchdog.h"

namespace vorn {

class SapiService : public SpeechService {
 public:
  /// `patience`: how long a voice may get no further in its text.
  explicit SapiService(std::chrono::milliseconds patience = std::chrono::seconds(10));
  /// Waits until the voice is silent, a second at most.
  ~SapiService() override;

  /// What keeps SAPI from speaking at all; empty where nothing does.
  static std::string problem();

  /// The player's usual one first. Waits for them, five seconds at most.
  std::vector<std::string> voices() override;
  void say(const std::string& text, const SpeechSettings& settings) override;
  void purge() override;
  /// When patience is at its end the text is given up, and said to be so on standard error.
  bool isSpeaking() override;

 private:
  struct Line;
  class Speaker;

  static void serve(const std::shared_ptr<Line>& line);

  const std::chrono::milliseconds patience_;
  Watchdog watchdog_;
  const std::shared_ptr<Line> line_;  ///< the thread's too: a hanging voice may keep it
};

}  // namespace vorn
