#include "platform/desktop/desktop_services.h"

#include <SDL_syswm.h>

#include <utility>

#include "platform/common/reader_service.h"
#include "platform/desktop/automation_reader.h"
#include "platform/desktop/fallback_service.h"
#include "platform/desktop/reader_pace.h"
#include "platform/desktop/sapi_service.h"

namespace vorn {
namespace {

constexpr NamedSpeech kChoices[] = {
    {"auto", SpeechChoice::kAuto}, {"sapi", SpeechChoice::kSapi}, {"reader", SpeechChoice::kReader}};

HWND handleOf(const Window& window) {
  SDL_SysWMinfo info;
  SDL_VERSION(&info.version);
  return SDL_GetWindowWMInfo(window.handle(), &info) == SDL_TRUE ? info.info.win.window : nullptr;
}

std::unique_ptr<FallibleService> makeReaderService(const SpeechSurroundings& surroundings) {
  auto reader = std::make_unique<AutomationReader>(handleOf(surroundings.window));
  const auto pace = readersPace(*reader, surroundings.window, surroundings.files, surroundings.reader);
  return std::make_unique<ReaderService>(std::move(reader), ReaderOptions{.pace = pace});
}

}  // namespace

std::span<const NamedSpeech> speechChoices() {
  return kChoices;
}

std::string speechProblem() {
  return SapiService::problem();
}

std::unique_ptr<SpeechService> makeSpeechService(SpeechChoice choice,
                                                 const SpeechSurroundings& surroundings) {
  auto sapi = std::make_unique<SapiService>();
  if (choice != SpeechChoice::kReader) return sapi;
  constexpr bool kMayBeMissing = false;
  return std::make_unique<FallbackService>(
      makeReaderService(surroundings), std::move(sapi),
      FallbackWords{"Screen reader", " No screen reader listens. The voice of Windows speaks instead. "},
      kMayBeMissing, surroundings.reader);
}

/// A screen reader that is told the texts shows them in braille too.
std::unique_ptr<TextDisplay> makeTextDisplay(SDL_Window*) {
  return nullptr;
}

}  // namespace vorn
