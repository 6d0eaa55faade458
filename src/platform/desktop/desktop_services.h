/// What each system's desktop has for the game beside window, devices and sound: who speaks, and
/// where it can be read.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/common/speech_service.h"
#include "platform/desktop/desktop_platform.h"
#include "platform/desktop/text_display.h"
#include "platform/desktop/window.h"
#include "platform/files.h"
#include "platform/mixing/mixer.h"

struct SDL_Window;

namespace vorn {

/// What those who speak may use; nothing of it is owned.
struct SpeechSurroundings {
  Mixer& mixer;  ///< plays what has no device of its own
  Window& window;
  Files& files;  ///< for what is to be known the next time
  /// Gets what is said beside the game's own texts, in UTF-8.
  std::function<void(const std::string& text)> reader;
};

/// Who speaks. May ask the player, and wait for his answer, how his screen reader reads.
std::unique_ptr<SpeechService> makeSpeechService(SpeechChoice choice, const SpeechSurroundings& surroundings);

/// Where spoken texts can be read besides `window`; null where there is no such thing.
std::unique_ptr<TextDisplay> makeTextDisplay(SDL_Window* window);

}  // namespace vorn
