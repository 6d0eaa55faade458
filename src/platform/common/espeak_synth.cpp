#include "platform/common/espeak_synth.h"

#include <espeak-ng/speak_lib.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <mutex>
#include <string_view>

#include "platform/common/windows1252.h"
#include "platform/errors.h"

namespace vorn {
namespace {

constexpr int kSilenceInFrontMs = 80;  ///< at most
constexpr int kPieceMs = 20;           ///< of sound that the library hands over at once

constexpr double kNormalSpeed = 175;  ///< words a minute
constexpr double kSlowest = 80, kFastest = 900;

struct InstalledVoice {
  std::string name;        ///< for the player
  std::string identifier;  ///< for the library
  int rank;                ///< its place in the list
};

/// The library, as it stands for the whole process: it keeps its state in
/// globals, and started a second time it hangs.
struct Library {
  int sampleRate = 0;  ///< 0: it did not start
  std::string problem;
  std::vector<InstalledVoice> voices;
  std::mutex inUse;
};

/// American English before all others, for the game's texts are written in it;
/// then English as the library ranks it; then the rest in the library's order.
int rankOf(std::string_view language, int priority) {
  constexpr int kOther = 1000;
  return language == "en-us" ? 0 : language.substr(0, 2) == "en" ? 1 + priority : kOther;
}

/// The voices that the library lists: one a language, variants left out.
std::vector<InstalledVoice> installedVoices() {
  std::vector<InstalledVoice> voices;
  for (const espeak_VOICE** voice = espeak_ListVoices(nullptr); *voice != nullptr; ++voice) {
    // A byte of priority, then the language.
    const char* languages = (*voice)->languages;
    voices.push_back({(*voice)->name, (*voice)->identifier, rankOf(languages + 1, languages[0])});
  }
  std::stable_sort(voices.begin(), voices.end(), [](const InstalledVoice& one, const InstalledVoice& other) {
    return one.rank < other.rank;
  });
  return voices;
}

/// What the library calls back with.
struct Request {
  const EspeakSynth::Sink& sink;
  std::ptrdiff_t silenceLeft;  ///< samples of silence that may still be left out in front
};

bool isHeard(std::int16_t sample) {
  constexpr int kSilence = 8;  // of 32768
  return std::abs(sample) > kSilence;
}

/// A text that begins with a closed mouth ("check", "car") has up to 50 ms of
/// silence in front, for which no player should wait. At volume 0 a text keeps its time.
int handOver(short* samples, int count, espeak_EVENT* events) {
  constexpr int kGoOn = 0, kStop = 1;
  if (samples == nullptr || count <= 0) {
    return kGoOn;
  }
  auto& request = *static_cast<Request*>(events->user_data);
  std::span<const std::int16_t> heard(samples, static_cast<std::size_t>(count));
  const auto silent =
      std::min(std::find_if(heard.begin(), heard.end(), isHeard) - heard.begin(), request.silenceLeft);
  heard = heard.subspan(static_cast<std::size_t>(silent));
  if (heard.empty()) {
    request.silenceLeft -= silent;
    return kGoOn;
  }
  request.silenceLeft = 0;
  return request.sink(heard) ? kGoOn : kStop;
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

int wordsAMinute(int rate) {
  return static_cast<int>(
      std::lround(std::clamp(kNormalSpeed * std::pow(3.0, rate / 10.0), kSlowest, kFastest)));
}

bool EspeakSynth::isCarried() {
  return true;
}

EspeakSynth::EspeakSynth() {
  const Library& opened = library();
  sampleRate_ = opened.sampleRate;
  problem_ = opened.problem;
  for (const InstalledVoice& voice : opened.voices) {
    voices_.push_back(voice.name);
  }
}

void EspeakSynth::speak(const std::string& text, const SpeechSettings& settings, const Sink& sink) {
  if (settings.voice < 0 || settings.voice >= static_cast<int>(voices_.size())) {
    throw PlatformError("Speak", text, voices_.empty() ? problem_ : "no such voice");
  }
  Library& opened = library();
  const std::lock_guard lock(opened.inUse);
  espeak_SetVoiceByName(opened.voices[static_cast<std::size_t>(settings.voice)].identifier.c_str());
  espeak_SetParameter(espeakRATE, wordsAMinute(settings.rate), 0);
  espeak_SetParameter(espeakVOLUME, settings.volume, 0);
  const std::string utf8 = printableUtf8(text);
  Request request{sink, sampleRate_ * kSilenceInFrontMs / 1000};
  espeak_Synth(utf8.c_str(), utf8.size() + 1, 0, POS_CHARACTER, 0, espeakCHARS_UTF8, nullptr, &request);
}

}  // namespace vorn
