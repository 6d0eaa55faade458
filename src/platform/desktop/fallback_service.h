/// Speaks through one service until it fails, and from then on through another,
/// which says so once and then what had been left unsaid. Where that one has no voices
/// nothing is said any more.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/common/speech_service.h"

namespace vorn {

/// What is told when the first one has failed.
struct FallbackWords {
  std::string service;  ///< its name, for standard error
  std::string notice;   ///< that the second one says, Windows-1252
};

class FallbackService : public SpeechService {
 public:
  /// Gets what is said beside the game's own texts, in UTF-8.
  using Reader = std::function<void(const std::string& text)>;

  /// `mayBeMissing`: nothing is said of a service that is not there to begin with.
  FallbackService(std::unique_ptr<FallibleService> first, std::unique_ptr<SpeechService> second,
                  FallbackWords words, bool mayBeMissing, Reader reader);

  /// Waits as the first service does. Once it has failed, the second one's voices
  /// take the places of its own.
  std::vector<std::string> voices() override;
  void say(const std::string& text, const SpeechSettings& settings) override;
  void purge() override;
  bool isSpeaking() override;

 private:
  SpeechService& current();
  void switchOver();
  void sayInstead(const Utterance& utterance);
  int replacementOf(int voice);

  std::unique_ptr<FallibleService> first_;
  std::unique_ptr<SpeechService> second_;
  const FallbackWords words_;
  const bool mayBeMissing_;
  Reader reader_;
  std::vector<std::string> names_;  ///< of the voices of this session; their number stays
  bool hasSwitched_ = false;
  bool isToBeTold_ = false;
  int voice_ = 0;  ///< the one that spoke last before the switch
};

}  // namespace vorn
