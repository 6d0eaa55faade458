#include "platform/common/espeak_synth.h"

#include <espeak-ng/speak_lib.h>

#include <mutex>

namespace vorn {
namespace {

constexpr int kPieceMs = 20;  ///< of sound that the library hands over at once

/// The library, as it stands for the whole process: it keeps its state in
/// globals, and started a second time it hangs.
struct Library {
  int sampleRate = 0;  ///< 0: it did not start
  std::string problem;
  std::vector<SynthVoice> voices;
  std::mutex inUse;
};

/// The voices that the library lists: one a language, variants left out.
std::vector<SynthVoice> installedVoices() {
  std::vector<SynthVoice> voices;
  for (const espeak_VOICE** voice = espeak_ListVoices(nullptr); *voice != nullptr; ++voice) {
    // A byte of priority, then the language.
    const char* languages = (*voice)->languages;
    voices.push_back({(*voice)->name, (*voice)->identifier, languages + 1, languages[0]});
  }
  return voices;
}

int handOver(short* samples, int count, espeak_EVENT* events) {
  constexpr int kGoOn = 0, kStop = 1;
  if (samples == nullptr || count <= 0) {
    return kGoOn;
  }
  const auto& sink = *static_cast<const SpeechSynth::Sink*>(events->user_data);
  return sink({samples, static_cast<std::size_t>(count)}) ? kGoOn : kStop;
}

void start(Library& library) {
  const int rate = espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, kPieceMs, nullptr, espeakINITIALIZE_DONT_EXIT);
  if (rate <= 0) {
    library.problem = "eSpeak NG did not start: is the package espeak-ng-data installed?";
    return;
  }
  library.sampleRate = rate;
  library.voices = installedVoices();
  espeak_SetSynthCallback(handOver);
}

Library& library() {
  static Library theLibrary;
  static std::once_flag once;
  std::call_once(once, [] { start(theLibrary); });
  return theLibrary;
}

}  // namespace

bool EspeakSynth::isCarried() {
  return true;
}

EspeakSynth::EspeakSynth() : SpeechSynth(library().sampleRate, library().voices, library().problem) {}

void EspeakSynth::synthesise(const Order& order, const Sink& sink) {
  const std::lock_guard lock(library().inUse);
  espeak_SetVoiceByName(order.voice.c_str());
  espeak_SetParameter(espeakRATE, order.wordsAMinute, 0);
  espeak_SetParameter(espeakVOLUME, order.volume, 0);
  Sink kept = sink;
  espeak_Synth(order.text.c_str(), order.text.size() + 1, 0, POS_CHARACTER, 0, espeakCHARS_UTF8, nullptr,
               &kept);
}

}  // namespace vorn
