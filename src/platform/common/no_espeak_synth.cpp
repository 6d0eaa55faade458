// For targets that eSpeak NG cannot be linked to.

#include "platform/common/espeak_synth.h"
#include "platform/common/voice_probe.h"
#include "platform/errors.h"

namespace vorn {

bool EspeakSynth::isCarried() {
  return false;
}

EspeakSynth::EspeakSynth() : problem_("this program carries no eSpeak NG") {}

void EspeakSynth::speak(const std::string& text, const SpeechSettings&, const Sink&) {
  throw PlatformError("Speak", text, problem_);
}

std::string damageOfVoiceData() {
  return "There is no embedded voice in this game (eSpeak NG): it speaks with the system's own.";
}

}  // namespace vorn
