/// How fast the player's screen reader reads: asked of him once, and kept.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "platform/common/screen_reader.h"
#include "platform/desktop/window.h"
#include "platform/files.h"

namespace vorn {

/// Milliseconds for a character. Where nothing is kept the reader reads a sentence that asks for
/// Enter at its end; this waits for it, at most half a minute more than the usual reader needs. `show` gets
/// the sentence too. Where nobody answers it is the usual pace, and asked for again the next time.
std::chrono::milliseconds readersPace(ScreenReader& reader, Window& window, Files& files,
                                      const std::function<void(const std::string& text)>& show);

}  // namespace vorn
