/// The embedded synthesiser in virtual time: a text takes as long as its sound.
#pragma once

#include "platform/common/espeak_synth.h"
#include "platform/headless/render.h"
#include "platform/headless/speech.h"

namespace vorn {

class EspeakSpeaker : public Speaker {
 public:
  /// Has at most `voiceCount` voices. `render`, not owned, makes it heard; null: nobody listens.
  EspeakSpeaker(int voiceCount, Render* render);
  std::vector<std::string> voices() const override { return voices_; }
  std::int64_t say(const Utterance& utterance) override;
  void silence() override;

 private:
  EspeakSynth synth_;
  std::vector<std::string> voices_;
  Render* render_;
};

}  // namespace vorn
