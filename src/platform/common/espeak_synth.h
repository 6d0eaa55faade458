/// The embedded speech synthesiser, eSpeak NG as a library of this process. One
/// thread at a time is served, another one waits for it.
#pragma once

#include "platform/common/speech_synth.h"

namespace vorn {

class EspeakSynth : public SpeechSynth {
 public:
  /// Whether this program carries it at all.
  static bool isCarried();

  /// Never fails: where the library cannot start there are no voices.
  EspeakSynth();

 private:
  void synthesise(const Order& order, const Sink& sink) override;
};

}  // namespace vorn
