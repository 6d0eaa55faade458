/// Speech through Speech Dispatcher, the speech service of the player's own
/// desktop. A thread of its own talks to the daemon, another one asks it for its
/// voices; a daemon that hangs keeps them, but not the game, for ever.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/common/speech_service.h"
#include "platform/common/watchdog.h"
#include "platform/desktop/dispatcher_voices.h"

namespace vorn {

struct DispatcherOptions {
  bool startsDaemon = false;         ///< else one that runs already is wanted
  std::filesystem::path voicesFile;  ///< where the list of its voices is kept from start to start
  std::chrono::milliseconds patience = std::chrono::seconds(8);  ///< with a daemon that does not answer
};

class DispatcherService : public FallibleService {
 public:
  /// Begins to connect, without waiting for it.
  explicit DispatcherService(const DispatcherOptions& options);
  ~DispatcherService() override;  ///< waits for the daemon to be left, but not long

  /// Waits until the daemon has answered, and where no list has been kept, for its
  /// list too. None where it has failed.
  std::vector<std::string> voices() override;
  void say(const std::string& text, const SpeechSettings& settings) override;
  void purge() override;
  bool isSpeaking() override;
  bool hasFailed() override;
  std::vector<Utterance> unsaid() override;
  std::string problem() override;

 private:
  struct Line;

  static void talk(const std::shared_ptr<Line>& line, bool startsDaemon);
  static void listVoices(const std::shared_ptr<Line>& line);
  void watch();

  const std::chrono::milliseconds patience_;
  const std::shared_ptr<Line> line_;  ///< between the threads, whichever lives longest
  Watchdog callWatchdog_, textWatchdog_;
};

}  // namespace vorn
