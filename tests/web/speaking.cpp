/// The game's embedded voice without a game: what `voice_in_node.js` plays with in Node.

#include <emscripten.h>

#include <memory>
#include <vector>

#include "platform/mixing/synth_service.h"
#include "platform/web/page_synth.h"

namespace {

struct Speaking {
  explicit Speaking(std::chrono::milliseconds patience)
      : synth(vorn::thePage(), patience), service(synth, mixer.voice(), patience) {}

  vorn::Mixer mixer;
  vorn::PageSynth synth;
  vorn::SynthService service;
};

std::unique_ptr<Speaking> speaking;

}  // namespace

extern "C" {

/// Once the page has given its voices; a voice that does not answer for `patience` milliseconds is given up.
/// Returns how many voices there are.
EMSCRIPTEN_KEEPALIVE int speaking_begin(int patience) {
  speaking = std::make_unique<Speaking>(std::chrono::milliseconds(patience));
  return static_cast<int>(speaking->synth.voices().size());
}

EMSCRIPTEN_KEEPALIVE void speaking_end() {
  speaking.reset();
}

EMSCRIPTEN_KEEPALIVE void speaking_say(const char* text, int voice, int volume, int rate) {
  speaking->service.say(text, {.voice = voice, .volume = volume, .rate = rate});
}

EMSCRIPTEN_KEEPALIVE void speaking_purge() {
  speaking->service.purge();
}

EMSCRIPTEN_KEEPALIVE int speaking_is_speaking() {
  return speaking->service.isSpeaking() ? 1 : 0;
}

/// Whether there is something to be played.
EMSCRIPTEN_KEEPALIVE int speaking_is_ready() {
  return speaking->mixer.voice().isSpeaking() ? 1 : 0;
}

/// Plays the next `ms` milliseconds. Returns them until the next call, left and right in turn.
EMSCRIPTEN_KEEPALIVE const float* speaking_play(int ms) {
  constexpr int kFramesAMs = vorn::Mixer::kRate / 1000;
  static std::vector<float> sound;
  sound.resize(std::size_t{2} * kFramesAMs * static_cast<std::size_t>(ms));
  speaking->mixer.render(sound.data(), kFramesAMs * ms);
  return sound.data();
}
}
