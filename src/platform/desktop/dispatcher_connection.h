/// A connection to the Speech Dispatcher daemon. Every call waits for the
/// daemon's answer, for ever where the daemon hangs, so none is for the game's
/// thread. A connection that has failed once stays so.
#pragma once

#include <libspeechd.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/desktop/dispatcher_voices.h"

namespace vorn {

class DispatcherConnection {
 public:
  enum class Notice { kBegun, kOver };  ///< over: said to its end or cancelled

  /// Gets what becomes of message number `message`, on a thread of the library.
  using Listener = std::function<void(int message, Notice notice)>;

  /// Null where no daemon answers (and, if it may be started, none can be).
  static std::unique_ptr<DispatcherConnection> open(bool startsDaemon, Listener listener);
  ~DispatcherConnection();
  DispatcherConnection(const DispatcherConnection&) = delete;
  DispatcherConnection& operator=(const DispatcherConnection&) = delete;

  /// The number of the message that says UTF-8 `text` after those before it; 0 where the daemon is gone.
  int say(const std::string& text);
  /// Silences this connection's messages.
  bool cancel();
  bool setRate(int rate);      ///< -100 .. 100
  bool setVolume(int volume);  ///< -100 .. 100
  bool setVoice(const DispatcherVoice& voice);
  /// What the player is to be offered; takes seconds.
  std::vector<DispatcherVoice> voices();
  /// The lines of the answer to a command of the protocol; nothing where the daemon is gone or refuses.
  std::optional<std::vector<std::string>> ask(const std::string& command);
  bool isAlive();

 private:
  explicit DispatcherConnection(SPDConnection* connection) : connection_(connection) {}
  bool listen(Listener listener);
  bool setModule(const std::string& module);
  bool keep(bool succeeded);
  std::optional<std::string> askForOne(const std::string& command);

  SPDConnection* connection_;
  int client_ = 0;  ///< as the daemon numbers this connection
  std::string usualModule_;
  bool hasFailed_ = false;
};

}  // namespace vorn
