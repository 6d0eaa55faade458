// For targets that eSpeak NG cannot be linked to.

#include "platform/common/espeak_synth.h"
#include "platform/errors.h"

namespace vorn {

EspeakSynth::EspeakSynth() : problem_("this program carries no eSpeak NG") {}

void EspeakSynth::speak(const std::string& text, const SpeechSettings&, const Sink&) {
  throw PlatformError("Speak", text, problem_);
}

}  // namespace vorn
