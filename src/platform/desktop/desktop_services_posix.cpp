#include <SDL_syswm.h>

#include <cstdlib>
#include <filesystem>
#include <utility>

#include "platform/common/espeak_synth.h"
#include "platform/common/voice_probe.h"
#include "platform/desktop/braille_display.h"
#include "platform/desktop/desktop_services.h"
#include "platform/desktop/dispatcher_service.h"
#include "platform/desktop/fallback_service.h"
#include "platform/mixing/synth_service.h"

namespace vorn {
namespace {

constexpr NamedSpeech kChoices[] = {{"auto", SpeechChoice::kAuto},
                                    {"espeak", SpeechChoice::kEspeak},
                                    {"speech-dispatcher", SpeechChoice::kSpeechDispatcher}};

/// The embedded voice with its synthesiser.
struct OwnSynth {
  EspeakSynth synth;
};
class EmbeddedVoice : OwnSynth, public SynthService {
 public:
  explicit EmbeddedVoice(VoiceStream& stream) : SynthService(synth, stream) {}
};

/// Where the desktop has programs keep what they could ask for again.
std::filesystem::path cacheFolder() {
  const char* const caches = std::getenv("XDG_CACHE_HOME");
  const char* const home = std::getenv("HOME");
  return (caches != nullptr && *caches != '\0'
              ? std::filesystem::path(caches)
              : std::filesystem::path(home != nullptr ? home : ".") / ".cache") /
         "vorn1";
}

/// As the X server numbers the window; -1 on any other desktop.
int numberOf(SDL_Window* window) {
  SDL_SysWMinfo info;
  SDL_VERSION(&info.version);
  const bool isX = SDL_GetWindowWMInfo(window, &info) == SDL_TRUE && info.subsystem == SDL_SYSWM_X11;
  return isX ? static_cast<int>(info.info.x11.window) : -1;
}

}  // namespace

std::span<const NamedSpeech> speechChoices() {
  return kChoices;
}

std::string speechProblem() {
  return damageOfVoiceData();
}

std::unique_ptr<SpeechService> makeSpeechService(SpeechChoice choice,
                                                 const SpeechSurroundings& surroundings) {
  auto embedded = std::make_unique<EmbeddedVoice>(surroundings.mixer.voice());
  if (choice == SpeechChoice::kEspeak) {
    return embedded;
  }
  const FallbackWords words{"Speech Dispatcher",
                            " Speech Dispatcher does not answer. The game's own voice speaks instead. "};
  const bool isDemanded = choice == SpeechChoice::kSpeechDispatcher;
  return std::make_unique<FallbackService>(
      std::make_unique<DispatcherService>(
          DispatcherOptions{.startsDaemon = isDemanded, .voicesFile = cacheFolder() / "voices"}),
      std::move(embedded), words, !isDemanded, surroundings.reader);
}

std::unique_ptr<TextDisplay> makeTextDisplay(SDL_Window* window) {
  return std::make_unique<BrailleDisplay>(numberOf(window));
}

}  // namespace vorn
