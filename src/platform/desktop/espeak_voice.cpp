#include "platform/desktop/espeak_voice.h"

#include <utility>

#include "platform/common/windows1252.h"
#include "platform/errors.h"

namespace vorn {

EspeakVoice::EspeakVoice(EspeakSynth& synth, SpeechService& service, Pause pause, Reader reader)
    : synth_(synth), service_(service), pause_(std::move(pause)), reader_(std::move(reader)) {}

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
  if (flags == speak_flags::kPurge) {
    service_.purge();
  }
  if (!text.empty()) {
    service_.say(text, settings_);
  }
  if (text.find_first_not_of(' ') != std::string::npos) {
    reader_(utf8FromWindows1252(text));
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
