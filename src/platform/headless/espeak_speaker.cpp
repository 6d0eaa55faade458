#include "platform/headless/espeak_speaker.h"

#include <algorithm>

namespace vorn {

EspeakSpeaker::EspeakSpeaker(int voiceCount, Render* render) : voices_(synth_.voices()), render_(render) {
  if (voices_.size() > static_cast<std::size_t>(voiceCount)) {
    voices_.resize(static_cast<std::size_t>(voiceCount));
  }
}

std::int64_t EspeakSpeaker::say(const Utterance& utterance) {
  std::vector<std::int16_t> sound;
  synth_.speak(utterance.text, {utterance.voice, utterance.volume, utterance.rate},
               [&](std::span<const std::int16_t> samples) {
                 sound.insert(sound.end(), samples.begin(), samples.end());
                 return true;
               });
  const std::int64_t perSecond = synth_.sampleRate();
  const auto ms = (static_cast<std::int64_t>(sound.size()) * 1000 + perSecond - 1) / perSecond;
  if (render_ != nullptr) render_->speak(synth_.sampleRate(), sound);
  return std::max<std::int64_t>(1, ms);
}

void EspeakSpeaker::silence() {
  if (render_ != nullptr) render_->silence();
}

}  // namespace vorn
