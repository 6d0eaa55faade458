#include "platform/desktop/dispatcher_connection.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <mutex>
#include <sstream>
#include <utility>

namespace vorn {
namespace {

/// The library's notices carry nothing but numbers.
struct Listeners {
  std::mutex mutex;
  std::map<int, DispatcherConnection::Listener> ofClient;
};

/// They outlive every thread that may be kept by a hanging daemon.
Listeners& listeners() {
  static auto& theListeners = *new Listeners;
  return theListeners;
}

void notice(std::size_t message, std::size_t client, SPDNotificationType type) {
  Listeners& all = listeners();
  const std::lock_guard lock(all.mutex);
  const auto listener = all.ofClient.find(static_cast<int>(client));
  if (listener != all.ofClient.end()) {
    listener->second(static_cast<int>(message), type == SPD_EVENT_BEGIN
                                                    ? DispatcherConnection::Notice::kBegun
                                                    : DispatcherConnection::Notice::kOver);
  }
}

}  // namespace

std::unique_ptr<DispatcherConnection> DispatcherConnection::open(bool startsDaemon, Listener listener) {
  char* problem = nullptr;
  SPDConnection* connection =
      spd_open2("vorn1", "main", nullptr, SPD_MODE_THREADED, nullptr, startsDaemon ? 1 : 0, &problem);
  std::free(problem);
  if (connection == nullptr) {
    return nullptr;
  }
  std::unique_ptr<DispatcherConnection> opened(new DispatcherConnection(connection));
  return opened->listen(std::move(listener)) ? std::move(opened) : nullptr;
}

// A connection that has failed is left as it is: the library has closed its socket
// by then, and would close whatever else has got the same number since.
DispatcherConnection::~DispatcherConnection() {
  {
    const std::lock_guard lock(listeners().mutex);
    listeners().ofClient.erase(client_);
  }
  if (isAlive()) {
    spd_close(connection_);
  }
}

bool DispatcherConnection::listen(Listener listener) {
  const auto client = askForOne("HISTORY GET CLIENT_ID");
  const auto module = askForOne("GET OUTPUT_MODULE");
  if (!client || !module) {
    return false;
  }
  client_ = std::atoi(client->c_str());
  usualModule_ = *module;
  {
    const std::lock_guard lock(listeners().mutex);
    listeners().ofClient[client_] = std::move(listener);
  }
  connection_->callback_begin = connection_->callback_end = connection_->callback_cancel = notice;
  return keep(spd_set_notification_on(connection_, SPD_BEGIN) == 0) &&
         keep(spd_set_notification_on(connection_, SPD_END) == 0) &&
         keep(spd_set_notification_on(connection_, SPD_CANCEL) == 0);
}

bool DispatcherConnection::keep(bool succeeded) {
  hasFailed_ |= !succeeded;
  return succeeded;
}

int DispatcherConnection::say(const std::string& text) {
  const int message = hasFailed_ ? 0 : spd_say(connection_, SPD_MESSAGE, text.c_str());
  return keep(message > 0) ? message : 0;
}

bool DispatcherConnection::cancel() {
  return keep(!hasFailed_ && spd_cancel(connection_) == 0);
}

bool DispatcherConnection::setRate(int rate) {
  return keep(!hasFailed_ && spd_set_voice_rate(connection_, rate) == 0);
}

bool DispatcherConnection::setVolume(int volume) {
  return keep(!hasFailed_ && spd_set_volume(connection_, volume) == 0);
}

bool DispatcherConnection::setModule(const std::string& module) {
  return keep(!hasFailed_ && spd_set_output_module(connection_, module.c_str()) == 0);
}

bool DispatcherConnection::setVoice(const DispatcherVoice& voice) {
  constexpr const char* kNone = "NULL";  // as the daemon writes it to its modules
  const bool isOwnChoice = voice.name.empty();
  return setModule(isOwnChoice ? usualModule_ : voice.module) &&
         keep(spd_set_synthesis_voice(connection_, isOwnChoice ? kNone : voice.name.c_str()) == 0);
}

std::vector<DispatcherVoice> DispatcherConnection::voices() {
  std::vector<std::string> modules = ask("LIST OUTPUT_MODULES").value_or(std::vector<std::string>{});
  std::stable_partition(modules.begin(), modules.end(),
                        [this](const std::string& module) { return module == usualModule_; });
  std::vector<DispatcherVoice> all;
  for (const std::string& module : modules) {
    if (setModule(module)) {
      const auto lines = ask("LIST SYNTHESIS_VOICES");
      const auto listed = listedVoices(module, lines.value_or(std::vector<std::string>{}));
      all.insert(all.end(), listed.begin(), listed.end());
    }
  }
  return offeredVoices(all, askForOne("GET LANGUAGE").value_or(""));
}

// Not by the library's own procedures for this: where the daemon dies meanwhile they crash.
std::optional<std::vector<std::string>> DispatcherConnection::ask(const std::string& command) {
  constexpr int kWithAnswer = 1;
  constexpr std::size_t kCodeLength = 4;  // "249-", and "249 " in the last line, which says how it went
  if (hasFailed_) {
    return std::nullopt;
  }
  char* const answer = spd_send_data(connection_, (command + "\r\n").c_str(), kWithAnswer);
  if (!keep(answer != nullptr)) {
    return std::nullopt;
  }
  std::istringstream in(answer);
  std::free(answer);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) {
    if (line.size() < kCodeLength || line[0] != '2' || line[kCodeLength - 1] == ' ') {
      return line[0] == '2' ? std::optional(lines) : std::nullopt;
    }
    lines.push_back(line.substr(kCodeLength, line.find_last_not_of('\r') + 1 - kCodeLength));
  }
  return std::nullopt;
}

std::optional<std::string> DispatcherConnection::askForOne(const std::string& command) {
  const auto lines = ask(command);
  return lines && lines->size() == 1 ? std::optional(lines->front()) : std::nullopt;
}

bool DispatcherConnection::isAlive() {
  return ask("HISTORY GET CLIENT_ID").has_value();
}

}  // namespace vorn
