#include "platform/common/service_voice.h"

#include <utility>

#include "platform/common/windows1252.h"
#include "platform/errors.h"

namespace vorn {
namespace {

bool isBlank(const std::string& text) {
  return text.find_first_not_of(' ') == std::string::npos;
}

}  // namespace

ServiceVoice::ServiceVoice(SpeechService& service, SpeechSettings& settings, bool introducesItself,
                           Pause pause, Reader reader)
    : service_(service),
      settings_(settings),
      introducesItself_(introducesItself),
      pause_(std::move(pause)),
      reader_(std::move(reader)) {
  settings_ = {};
}

ServiceVoice::~ServiceVoice() {
  service_.purge();
}

void ServiceVoice::doSpeak(const std::string& text, int flags) {
  if (flags < speak_flags::kSynchronous || flags > speak_flags::kPurge) {
    throw PlatformError("Speak", std::to_string(flags), "no such flags");
  }
  if (flags == speak_flags::kPurge) {
    service_.purge();
  }
  say(text);
  if (flags == speak_flags::kSynchronous) {
    waitUntilIdle();
    if (introducesItself_ && isBlank(text)) {
      introduce();
    }
  }
}

void ServiceVoice::say(const std::string& text) {
  if (!text.empty()) {
    service_.say(text, settings_);
  }
  if (!isBlank(text)) {
    reader_(printableUtf8(text));
  }
}

/// Once: what the player is asked about next is this voice.
void ServiceVoice::introduce() {
  introducesItself_ = false;
  const std::vector<std::string> names = service_.voices();
  const auto index = static_cast<std::size_t>(settings_.voice);
  if (index < names.size()) {
    say(" " + windows1252FromUtf8(names[index]) + ". ");
  }
}

void ServiceVoice::waitUntilIdle() {
  while (service_.isSpeaking()) {
    if (!pause_()) {
      service_.purge();
    }
  }
}

int ServiceVoice::doRunningState() {
  constexpr int kDone = 1;
  return service_.isSpeaking() ? kSpeaking : kDone;
}

}  // namespace vorn
