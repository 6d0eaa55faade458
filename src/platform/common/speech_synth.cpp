#include "platform/common/speech_synth.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "platform/common/windows1252.h"
#include "platform/errors.h"

namespace vorn {
namespace {

constexpr int kSilenceInFrontMs = 80;  ///< at most

constexpr double kNormalSpeed = 175;  ///< words a minute
constexpr double kSlowest = 80, kFastest = 900;

/// American English before all others, for the game's texts are written in it;
/// then English as the synthesiser ranks it; then the rest in the synthesiser's order.
int rankOf(const SynthVoice& voice) {
  constexpr int kOther = 1000;
  return voice.language == "en-us"                            ? 0
         : std::string_view(voice.language).starts_with("en") ? 1 + voice.priority
                                                              : kOther;
}

bool isHeard(std::int16_t sample) {
  constexpr int kSilence = 8;  // of 32768
  return std::abs(sample) > kSilence;
}

}  // namespace

int wordsAMinute(int rate) {
  return static_cast<int>(
      std::lround(std::clamp(kNormalSpeed * std::pow(3.0, rate / 10.0), kSlowest, kFastest)));
}

SpeechSynth::SpeechSynth(int sampleRate, std::vector<SynthVoice> voices, std::string problem)
    : sampleRate_(sampleRate), problem_(std::move(problem)) {
  std::stable_sort(voices.begin(), voices.end(), [](const SynthVoice& one, const SynthVoice& other) {
    return rankOf(one) < rankOf(other);
  });
  for (const SynthVoice& voice : voices) {
    names_.push_back(voice.name);
    identifiers_.push_back(voice.identifier);
  }
}

/// A text that begins with a closed mouth ("check", "car") has up to 50 ms of
/// silence in front, for which no player should wait. At volume 0 a text keeps its time.
void SpeechSynth::speak(const std::string& text, const SpeechSettings& settings, const Sink& sink) {
  if (settings.voice < 0 || settings.voice >= static_cast<int>(identifiers_.size())) {
    throw PlatformError("Speak", text, identifiers_.empty() ? problem_ : "no such voice");
  }
  std::ptrdiff_t silenceLeft = sampleRate_ * kSilenceInFrontMs / 1000;
  const auto begun = [&](std::span<const std::int16_t> samples) {
    const auto silent =
        std::min(std::find_if(samples.begin(), samples.end(), isHeard) - samples.begin(), silenceLeft);
    samples = samples.subspan(static_cast<std::size_t>(silent));
    if (samples.empty()) {
      silenceLeft -= silent;
      return true;
    }
    silenceLeft = 0;
    return sink(samples);
  };
  synthesise({printableUtf8(text), identifiers_[static_cast<std::size_t>(settings.voice)],
              wordsAMinute(settings.rate), settings.volume},
             begun);
}

}  // namespace vorn
