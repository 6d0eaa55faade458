#include "platform/web/page_speech.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "platform/common/windows1252.h"

namespace vorn {
namespace {

using std::chrono::milliseconds;

/// The page itself allows no voice more and takes no reader for slower (`site/voices.js`, `site/page.js`).
milliseconds longest(const std::string& text, int rate) {
  constexpr double kMsACharacter = 300;
  const double pace = std::min(1.0, std::pow(3, rate / 10.0));
  return milliseconds(
      static_cast<milliseconds::rep>(kMsACharacter / pace * static_cast<double>(text.size())));
}

}  // namespace

void PageSpeech::say(const std::string& text, const SpeechSettings& settings) {
  constexpr char kSeparator = '\x1F';
  page_.tell(Tell::kSay, ++asked_,
             std::to_string(settings.voice) + kSeparator + std::to_string(settings.rate) + kSeparator +
                 std::to_string(settings.volume) + kSeparator + printableUtf8(text));
  unsaid_.push_back(longest(text, settings.rate));
}

void PageSpeech::purge() {
  page_.tell(Tell::kSilence, asked_);
  page_.noteSaid(asked_);  // the page need not answer
  unsaid_.clear();
  watchdog_.rest();
}

bool PageSpeech::isSpeaking() {
  const std::int32_t said = page_.said;
  if (said >= asked_) {
    watchdog_.rest();
    unsaid_.clear();
    return false;
  }
  while (std::cmp_greater(unsaid_.size(), asked_ - said)) {
    unsaid_.pop_front();
  }
  if (watchdog_.idleFor(static_cast<std::uint64_t>(said), std::chrono::steady_clock::now()) >= patience()) {
    page_.tell(Tell::kDiagnosis, 0, "The voice has fallen silent.");
    purge();
    return false;
  }
  return true;
}

milliseconds PageSpeech::patience() const {
  return std::accumulate(unsaid_.begin(), unsaid_.end(), patience_);
}

}  // namespace vorn
