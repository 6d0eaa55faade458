#include "platform/desktop/espeak_voice.h"

#include <ostream>
#include <utility>

#include "platform/errors.h"
#include "platform/windows1252.h"

namespace vorn {

EspeakVoice::EspeakVoice(EspeakSynth& synth, SpeechService& service, Pause pause, std::ostream* captions)
    : synth_(synth), service_(service), pause_(std::move(pause)), captions_(captions) {}

EspeakVoice::~EspeakVoice() {
  service_.purge();
}

void EspeakVoice::doSpeak(const std::string& text, int flags) {
  if (flags < speak_flags::kSynchronous || flags > speak_flags::kPurge) {
    throw PlatformError("Speak", std::to_string(flags), "no such flags");
  }
  if (synth_.voices().empty()) {
    throw PlatformError("Speak", text, synth_.problem());
  }
  const bool isBlank = text.find_first_not_of(' ') == std::string::npos;
  if (captions_ != nullptr && !isBlank) {
    *captions_ << utf8FromWindows1252(text) << std::endl;
  }
  if (flags == speak_flags::kPurge) {
    service_.purge();
  }
  if (!text.empty()) {
    service_.say(text, settings_);
  }
  if (flags == speak_flags::kSynchronous) {
    while (service_.isSpeaking()) {
      if (!pause_()) {
        service_.purge();
      }
    }
  }
}

int EspeakVoice::doRunningState() {
  constexpr int kDone = 1;
  return service_.isSpeaking() ? kSpeaking : kDone;
}

}  // namespace vorn
