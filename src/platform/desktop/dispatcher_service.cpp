#include "platform/desktop/dispatcher_service.h"

#include <algorithm>
#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "platform/common/windows1252.h"
#include "platform/desktop/broken_pipes.h"
#include "platform/desktop/dispatcher_connection.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr auto kPulse = 200ms;         ///< so often the daemon is felt while it should be speaking
constexpr auto kLongestFarewell = 1s;  ///< of a daemon that may hang
constexpr auto kLongestListing = 5s;   ///< of thousands of voices, when no list has been kept

int numberIn(const std::optional<std::vector<std::string>>& answer, int otherwise) {
  return answer && answer->size() == 1 ? std::atoi(answer->front().c_str()) : otherwise;
}

/// Keeps the daemon's settings at those of the text that is handed over.
class Speaker {
 public:
  explicit Speaker(DispatcherConnection& connection)
      : usualRate(numberIn(connection.ask("GET RATE"), 0)),
        usualVolume(numberIn(connection.ask("GET VOLUME"), 100)),
        connection_(connection) {}

  /// The number of the message; 0 where the daemon is gone.
  int say(const Utterance& utterance, const DispatcherVoice& voice) {
    const int rate = dispatcherRate(utterance.settings.rate, usualRate);
    const int volume = dispatcherVolume(utterance.settings.volume, usualVolume);
    const bool isReady = (voice == voice_ || connection_.setVoice(voice)) &&
                         (rate == rate_ || connection_.setRate(rate)) &&
                         (volume == volume_ || connection_.setVolume(volume));
    voice_ = voice;
    rate_ = rate;
    volume_ = volume;
    return isReady ? connection_.say(printableUtf8(utterance.text)) : 0;
  }

  const int usualRate, usualVolume;  ///< as the player has chosen them for his desktop

 private:
  DispatcherConnection& connection_;
  DispatcherVoice voice_;  ///< the player's own
  int rate_ = usualRate, volume_ = usualVolume;
};

/// A text on its way.
struct Spoken {
  Utterance utterance;
  std::uint64_t serial;
  std::chrono::milliseconds longest;  ///< that it may take from its first word
  int message = 0;                    ///< the daemon's number for it; 0: not handed over yet
  bool hasBegun = false;
};

}  // namespace

/// What the game's thread and the daemon's share.
struct DispatcherService::Line {
  explicit Line(std::filesystem::path file) : voicesFile(std::move(file)), voices(readVoices(voicesFile)) {}

  const std::filesystem::path voicesFile;

  std::mutex mutex;  ///< over what follows
  std::condition_variable changed;

  std::vector<DispatcherVoice> voices;  ///< offered in this session
  bool isConnected = false;
  std::string problem;  ///< not empty: the service has failed
  int usualRate = 0;

  std::deque<Spoken> texts;  ///< that have not been said to their end, the oldest first
  std::uint64_t lastSerial = 0;
  int lastOver = 0;  ///< the last message that has ended
  bool isCancelAsked = false;
  bool isEnding = false;  ///< the daemon is to be left
  bool isLeft = false;

  bool isCalling = true;  ///< the daemon has been asked something and has not answered
  std::uint64_t calls = 0;

  void fail(const std::string& what) {
    if (problem.empty()) {
      problem = what;
    }
    isCancelAsked = isEnding = true;
    changed.notify_all();
  }

  void hear(int message, DispatcherConnection::Notice notice) {
    const std::lock_guard lock(mutex);
    if (notice == DispatcherConnection::Notice::kOver) {
      lastOver = std::max(lastOver, message);
      dropWhatIsOver();
    } else {
      for (Spoken& text : texts) {
        text.hasBegun |= text.message == message;
      }
    }
  }

  /// Messages end in the order of their numbers.
  void dropWhatIsOver() {
    while (!texts.empty() && texts.front().message != 0 && texts.front().message <= lastOver) {
      texts.pop_front();
    }
  }

  bool isWaiting() const { return !texts.empty() && texts.back().message == 0; }
  bool hasWork() const { return isEnding || isCancelAsked || isWaiting(); }

  /// Calls the daemon without keeping the game from the line meanwhile.
  template <typename Call>
  auto unlocked(std::unique_lock<std::mutex>& lock, Call&& call) {
    isCalling = true;
    lock.unlock();
    auto result = call();
    lock.lock();
    isCalling = false;
    ++calls;
    return result;
  }

  bool handOver(std::unique_lock<std::mutex>& lock, Speaker& speaker) {
    const auto waiting = [](const Spoken& text) { return text.message == 0; };
    const Spoken next = *std::find_if(texts.begin(), texts.end(), waiting);
    const auto index = static_cast<std::size_t>(next.utterance.settings.voice);
    const DispatcherVoice voice = index < voices.size() ? voices[index] : DispatcherVoice{};
    const int message = unlocked(lock, [&] { return speaker.say(next.utterance, voice); });
    for (Spoken& text : texts) {  // it may have been purged meanwhile
      if (text.serial == next.serial) {
        text.message = message;
      }
    }
    dropWhatIsOver();
    return message != 0;
  }

  /// Until the daemon is to be left or is gone.
  void converse(DispatcherConnection& connection, Speaker& speaker) {
    std::unique_lock lock(mutex);
    bool isAlive = true;
    while (isAlive && (!isEnding || isCancelAsked)) {
      if (std::exchange(isCancelAsked, false)) {
        isAlive = unlocked(lock, [&] { return connection.cancel(); });
      } else if (isWaiting()) {
        isAlive = handOver(lock, speaker);
      } else if (texts.empty()) {
        changed.wait(lock, [this] { return hasWork(); });
      } else if (!changed.wait_for(lock, kPulse, [this] { return hasWork() || texts.empty(); })) {
        isAlive = unlocked(lock, [&] { return connection.isAlive(); });
      }
    }
    if (!isAlive) {
      fail("the daemon has gone");
    }
  }
};

DispatcherService::DispatcherService(const DispatcherOptions& options)
    : patience_(options.patience), line_(std::make_shared<Line>(options.voicesFile)) {
  std::thread(talk, line_, options.startsDaemon).detach();
}

DispatcherService::~DispatcherService() {
  std::unique_lock lock(line_->mutex);
  line_->texts.clear();
  line_->fail("left");
  line_->changed.wait_for(lock, kLongestFarewell, [this] { return line_->isLeft; });
}

/// The thread that talks to the daemon.
void DispatcherService::talk(const std::shared_ptr<Line>& line, bool startsDaemon) {
  ignoreBrokenPipes();
  if (const auto connection =
          DispatcherConnection::open(startsDaemon, [line](auto... what) { line->hear(what...); })) {
    Speaker speaker(*connection);
    {
      const std::lock_guard lock(line->mutex);
      line->isConnected = true;
      line->isCalling = false;
      line->usualRate = speaker.usualRate;
      line->changed.notify_all();
    }
    std::thread(listVoices, line).detach();
    line->converse(*connection, speaker);
  }
  const std::lock_guard lock(line->mutex);
  line->fail("no daemon answers");
  line->isCalling = false;
  line->isLeft = true;
}

/// The thread that asks for the voices.
void DispatcherService::listVoices(const std::shared_ptr<Line>& line) {
  ignoreBrokenPipes();
  const auto connection = DispatcherConnection::open(false, [](auto...) {});
  if (connection == nullptr) {
    return;
  }
  const std::vector<DispatcherVoice> offered = connection->voices();
  {
    const std::lock_guard lock(line->mutex);
    if (line->voices.empty()) {
      line->voices = offered;
    }
    line->changed.notify_all();
  }
  writeVoices(line->voicesFile, offered);
}

std::vector<std::string> DispatcherService::voices() {
  std::unique_lock lock(line_->mutex);
  const auto hasFailed = [this] { return !line_->problem.empty(); };
  if (!line_->changed.wait_for(lock, patience_, [&] { return line_->isConnected || hasFailed(); })) {
    line_->fail("the daemon does not answer");
  }
  line_->changed.wait_for(lock, kLongestListing, [&] { return !line_->voices.empty() || hasFailed(); });
  if (hasFailed()) {
    return {};
  }
  if (line_->voices.empty()) {
    line_->voices = offeredVoices({}, "");
  }
  std::vector<std::string> names;
  std::transform(line_->voices.begin(), line_->voices.end(), std::back_inserter(names), nameOf);
  return names;
}

void DispatcherService::say(const std::string& text, const SpeechSettings& settings) {
  if (text.find_first_not_of(' ') == std::string::npos) {
    return;
  }
  const std::lock_guard lock(line_->mutex);
  const auto longest = longestReading(text, dispatcherRate(settings.rate, line_->usualRate));
  line_->texts.push_back({{text, settings}, ++line_->lastSerial, longest});
  line_->changed.notify_all();
}

void DispatcherService::purge() {
  const std::lock_guard lock(line_->mutex);
  line_->isCancelAsked |= !line_->texts.empty();
  line_->texts.clear();
  line_->changed.notify_all();
}

bool DispatcherService::isSpeaking() {
  const std::lock_guard lock(line_->mutex);
  return !line_->texts.empty();
}

bool DispatcherService::hasFailed() {
  const std::lock_guard lock(line_->mutex);
  if (line_->problem.empty()) {
    watch();
  }
  return !line_->problem.empty();
}

void DispatcherService::watch() {
  const auto now = steady_clock::now();
  if (!line_->isCalling) {
    callWatchdog_.rest();
  } else if (callWatchdog_.idleFor(line_->calls, now) >= patience_) {
    line_->fail("the daemon does not answer");
  }
  if (line_->texts.empty()) {
    textWatchdog_.rest();
    return;
  }
  const Spoken& text = line_->texts.front();
  const auto longest = text.hasBegun ? patience_ + text.longest : patience_;
  if (textWatchdog_.idleFor(2 * text.serial + (text.hasBegun ? 1 : 0), now) >= longest) {
    line_->fail("the daemon has fallen silent");
  }
}

std::vector<Utterance> DispatcherService::unsaid() {
  const std::lock_guard lock(line_->mutex);
  std::vector<Utterance> utterances;
  for (const Spoken& text : line_->texts) {
    utterances.push_back(text.utterance);
  }
  return utterances;
}

std::string DispatcherService::problem() {
  const std::lock_guard lock(line_->mutex);
  return line_->problem;
}

}  // namespace vorn
