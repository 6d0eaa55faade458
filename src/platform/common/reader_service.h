/// Speech that is left to the player's screen reader. A text is taken to be read for as long as it is
/// long at the reader's pace; the next one is handed over then.
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/common/screen_reader.h"
#include "platform/common/speech_service.h"
#include "platform/common/watchdog.h"

namespace vorn {

/// How long a reader takes for a character.
inline constexpr std::chrono::milliseconds kUsualReadingPace{60}, kQuickestReadingPace{5},
    kSlowestReadingPace{200};

/// What the pace of a reader is that took `taken` for `text`: the usual one where that cannot be.
std::chrono::milliseconds readingPace(const std::string& text, std::chrono::milliseconds taken);

struct ReaderOptions {
  std::chrono::milliseconds pace = kUsualReadingPace;  ///< for a character
  std::chrono::milliseconds settling =
      std::chrono::seconds(1);  ///< in which it tells of the new window first
  std::chrono::milliseconds patience = std::chrono::seconds(5);  ///< with nobody who listens
};

class ReaderService : public FallibleService {
 public:
  using Time = std::chrono::steady_clock::time_point;
  using Clock = std::function<Time()>;

  ReaderService(std::unique_ptr<ScreenReader> reader, const ReaderOptions& options,
                Clock clock = std::chrono::steady_clock::now);

  /// One: which voice reads, how fast and how loud is the reader's affair.
  std::vector<std::string> voices() override;
  void say(const std::string& text, const SpeechSettings& settings) override;
  /// The reader falls silent with the next text, which takes the place of what it is reading.
  void purge() override;
  bool isSpeaking() override;
  bool hasFailed() override;
  std::vector<Utterance> unsaid() override { return {queue_.begin(), queue_.end()}; }
  std::string problem() override { return problem_; }

 private:
  void goOn();
  void tellNext(Time now);

  const std::unique_ptr<ScreenReader> reader_;
  const ReaderOptions options_;
  const Clock clock_;
  const Time begun_;
  std::string problem_;          ///< not empty: it has failed
  std::deque<Utterance> queue_;  ///< not read to its end
  bool isTold_ = false;          ///< the first of them
  Time end_;                     ///< of it
  bool interrupts_ = false;      ///< the next one
  Watchdog watchdog_;
};

}  // namespace vorn
