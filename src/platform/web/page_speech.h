/// Speech that the page says: with the browser's voices, or by leaving it to the
/// player's screen reader. Which, the page knows.
#pragma once

#include <chrono>
#include <deque>

#include "platform/common/speech_service.h"
#include "platform/common/watchdog.h"
#include "platform/web/page.h"

namespace vorn {

class PageSpeech : public SpeechService {
 public:
  /// The page is not owned. `patience`: how long the page may be silent about a text, besides
  /// the time that it takes at the slowest to say what is asked for.
  explicit PageSpeech(Page& page, std::chrono::milliseconds patience = std::chrono::seconds(60))
      : page_(page), patience_(patience) {}

  std::vector<std::string> voices() override { return page_.voices; }
  void say(const std::string& text, const SpeechSettings& settings) override;
  void purge() override;
  /// Where the page is silent about a text for too long it is given up.
  bool isSpeaking() override;

 private:
  std::chrono::milliseconds patience() const;

  Page& page_;
  const std::chrono::milliseconds patience_;
  Watchdog watchdog_;
  std::int32_t asked_ = 0;                        ///< number of the last request
  std::deque<std::chrono::milliseconds> unsaid_;  ///< what the last requests take at the slowest
};

}  // namespace vorn
