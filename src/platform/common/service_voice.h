/// The game's voice, whichever service says its texts.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/common/speech_service.h"
#include "platform/voice.h"

namespace vorn {

class ServiceVoice : public Voice {
 public:
  /// Lets a moment pass while a synchronous text is being said, taking in events
  /// without delivering them; false: the player wants out, so the text is cut.
  using Pause = std::function<bool()>;

  /// Gets each text that is not blank, in UTF-8 without control characters.
  using Reader = std::function<void(const std::string& text)>;

  /// The service is not owned. `settings` become those of a new voice, follow this
  /// one's, and stay when it is gone. A voice that `introducesItself` says its
  /// name, without waiting for it, at the blank that makes it ready.
  ServiceVoice(SpeechService& service, SpeechSettings& settings, bool introducesItself, Pause pause,
               Reader reader);
  ~ServiceVoice() override;  ///< silences it

  std::vector<std::string> GetVoices() override { return service_.voices(); }

 private:
  void doSetVoice(int index) override { settings_.voice = index; }
  void doSetVolume(int volume) override { settings_.volume = volume; }
  void doSetRate(int rate) override { settings_.rate = rate; }
  void doSpeak(const std::string& text, int flags) override;
  int doRunningState() override;
  void say(const std::string& text);
  void introduce();
  void waitUntilIdle();

  SpeechService& service_;
  SpeechSettings& settings_;
  bool introducesItself_;
  Pause pause_;
  Reader reader_;
};

}  // namespace vorn
