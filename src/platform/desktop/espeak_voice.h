/// The game's voice on the embedded synthesiser.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/desktop/speech_service.h"
#include "platform/voice.h"

namespace vorn {

class EspeakVoice : public Voice {
 public:
  /// Lets a moment pass while a synchronous text is being said, taking in events
  /// without delivering them; false: the player wants out, so the text is cut.
  using Pause = std::function<bool()>;

  /// Gets each text that is not blank, in UTF-8.
  using Reader = std::function<void(const std::string& text)>;

  /// Neither synthesiser nor service is owned.
  EspeakVoice(EspeakSynth& synth, SpeechService& service, Pause pause, Reader reader);
  ~EspeakVoice() override;  ///< silences it

  std::vector<std::string> GetVoices() override { return synth_.voices(); }

 private:
  void doSetVoice(int index) override { settings_.voice = index; }
  void doSetVolume(int volume) override { settings_.volume = volume; }
  void doSetRate(int rate) override { settings_.rate = rate; }
  void doSpeak(const std::string& text, int flags) override;
  int doRunningState() override;

  EspeakSynth& synth_;
  SpeechService& service_;
  Pause pause_;
  Reader reader_;
  SpeechSettings settings_;
};

}  // namespace vorn
