/// What each system's desktop has for the game beside window, devices and sound: who speaks, and
/// where it can be read.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/common/speech_service.h"
#include "platform/desktop/desktop_platform.h"
#include "platform/desktop/text_display.h"
#include "platform/mixing/mixer.h"

struct SDL_Window;

namespace vorn {

/// Who speaks. `mixer`, not owned, plays what has no device of its own; `reader` gets
/// what is said beside the game's own texts, in UTF-8.
std::unique_ptr<SpeechService> makeSpeechService(SpeechChoice choice, Mixer& mixer,
                                                 std::function<void(const std::string& text)> reader);

/// Where spoken texts can be read besides `window`; null where there is no such thing.
std::unique_ptr<TextDisplay> makeTextDisplay(SDL_Window* window);

}  // namespace vorn
