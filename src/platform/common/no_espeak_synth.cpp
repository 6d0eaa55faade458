// For targets that eSpeak NG cannot be linked to.

#include "platform/common/espeak_synth.h"
#include "platform/common/voice_probe.h"

namespace vorn {

bool EspeakSynth::isCarried() {
  return false;
}

EspeakSynth::EspeakSynth() : SpeechSynth(0, {}, "this program carries no eSpeak NG") {}

void EspeakSynth::synthesise(const Order&, const Sink&) {}  // never asked for: there are no voices

std::string damageOfVoiceData() {
  return "There is no embedded voice in this game (eSpeak NG): it speaks with the system's own.";
}

}  // namespace vorn
