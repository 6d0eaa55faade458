/// eSpeak NG in a worker of the page, `site/speaker.js`, which gets its orders and
/// hands over its sound through memory that both see.
#pragma once

#include <chrono>
#include <string>

#include "platform/common/speech_synth.h"
#include "platform/web/page.h"

namespace vorn {

class PageSynth : public SpeechSynth {
 public:
  /// With the voices that the page has given. The page is not owned. `patience`: how
  /// long the worker may do nothing before the page is told to replace it and the text is
  /// given up, with a `PlatformError`.
  explicit PageSynth(Page& page, std::chrono::milliseconds patience = std::chrono::seconds(10));

 private:
  void synthesise(const Order& order, const Sink& sink) override;
  void put(const Order& order);
  bool passOn(const Sink& sink);
  void drop();
  void waitForNews(std::int32_t news, const std::string& text);

  Page& page_;
  SpeakerDesk& desk_;
  const std::chrono::milliseconds patience_;
  std::string order_;  ///< what the worker reads
};

}  // namespace vorn
