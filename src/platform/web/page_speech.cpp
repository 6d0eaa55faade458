#include "platform/web/page_speech.h"

#include "platform/common/windows1252.h"

namespace vorn {

void PageSpeech::say(const std::string& text, const SpeechSettings& settings) {
  constexpr char kSeparator = '\x1F';
  page_.tell(Tell::kSay, ++asked_,
             std::to_string(settings.voice) + kSeparator + std::to_string(settings.rate) + kSeparator +
                 std::to_string(settings.volume) + kSeparator + printableUtf8(text));
}

void PageSpeech::purge() {
  page_.tell(Tell::kSilence, asked_);
  // The page need not answer; it may still report an older one, which changes nothing.
  page_.said = asked_;
  watchdog_.rest();
}

bool PageSpeech::isSpeaking() {
  const std::int32_t said = page_.said;
  if (said >= asked_) {
    watchdog_.rest();
    return false;
  }
  if (watchdog_.idleFor(static_cast<std::uint64_t>(said), std::chrono::steady_clock::now()) >= patience_) {
    page_.tell(Tell::kDiagnosis, 0, "The voice has fallen silent.");
    purge();
    return false;
  }
  return true;
}

}  // namespace vorn
