#include "platform/desktop/fallback_service.h"

#include <iostream>
#include <utility>

namespace vorn {

FallbackService::FallbackService(std::unique_ptr<FallibleService> first,
                                 std::unique_ptr<SpeechService> second, FallbackWords words,
                                 bool mayBeMissing, Reader reader)
    : first_(std::move(first)),
      second_(std::move(second)),
      words_(std::move(words)),
      mayBeMissing_(mayBeMissing),
      reader_(std::move(reader)) {}

std::vector<std::string> FallbackService::voices() {
  if (names_.empty()) {
    names_ = first_->voices();
  }
  current();
  if (names_.empty()) {
    names_ = second_->voices();
  }
  return names_;
}

void FallbackService::say(const std::string& text, const SpeechSettings& settings) {
  SpeechService& service = current();
  if (hasSwitched_) {
    sayInstead({text, settings});
  } else {
    voice_ = settings.voice;
    service.say(text, settings);
  }
}

void FallbackService::purge() {
  current().purge();
}

bool FallbackService::isSpeaking() {
  return current().isSpeaking();
}

SpeechService& FallbackService::current() {
  if (!hasSwitched_ && first_->hasFailed()) {
    switchOver();
  }
  return hasSwitched_ ? *second_ : static_cast<SpeechService&>(*first_);
}

void FallbackService::switchOver() {
  hasSwitched_ = true;
  const bool wasThere = !names_.empty();
  isToBeTold_ = wasThere || !mayBeMissing_;
  if (isToBeTold_) {
    std::cerr << words_.service << ": " << first_->problem() << '.' << std::endl;
  }
  const std::vector<std::string> replacements = second_->voices();
  for (std::size_t place = 0; place < names_.size() && !replacements.empty(); ++place) {
    names_[place] = replacements[static_cast<std::size_t>(replacementOf(static_cast<int>(place)))];
  }
  for (const Utterance& utterance : first_->unsaid()) {
    sayInstead(utterance);
  }
}

void FallbackService::sayInstead(const Utterance& utterance) {
  SpeechSettings settings = utterance.settings;
  settings.voice = replacementOf(settings.voice);
  const bool hasVoices =
      !second_->voices().empty();  // where it has none, the game goes on with captions alone
  if (std::exchange(isToBeTold_, false)) {
    if (hasVoices) second_->say(words_.notice, settings);
    reader_(words_.notice);
  }
  if (hasVoices) second_->say(utterance.text, settings);
}

/// The first voice, which suits the game's texts best, stands in for the one that was in use.
int FallbackService::replacementOf(int voice) {
  const auto count = static_cast<int>(second_->voices().size());
  return voice == voice_ || count == 0 ? 0 : voice % count;
}

}  // namespace vorn
