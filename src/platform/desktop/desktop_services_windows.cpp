#include "platform/desktop/desktop_services.h"
#include "platform/desktop/sapi_service.h"

namespace vorn {
namespace {

constexpr NamedSpeech kChoices[] = {{"auto", SpeechChoice::kAuto}, {"sapi", SpeechChoice::kSapi}};

}  // namespace

std::span<const NamedSpeech> speechChoices() {
  return kChoices;
}

std::string speechProblem() {
  return SapiService::problem();
}

std::unique_ptr<SpeechService> makeSpeechService(SpeechChoice, Mixer&,
                                                 std::function<void(const std::string& text)>) {
  return std::make_unique<SapiService>();
}

/// The voice is SAPI's alone.
std::unique_ptr<TextDisplay> makeTextDisplay(SDL_Window*) {
  return nullptr;
}

}  // namespace vorn
