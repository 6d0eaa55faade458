/// A session that can be played again: the whole game on another platform, with everything that the player
/// does written down as the script of a headless session.
#pragma once

#include <filesystem>
#include <memory>

#include "platform/platform.h"

namespace vorn {

/// A platform on top of `inner` (not owned). The script goes to `script`, with its options in its first line,
/// `furtherOptions` behind them, and each car tick as a comment, so that whoever plays it again can see that
/// it is the same race; what the game's folder holds of settings, records and log is copied to a folder
/// beside it, NAME.folder for NAME.script.
///
/// Meanwhile the game's clock counts yields, a millisecond each, as that of a headless session does, and each
/// yield that may wait takes a real one. Throws `PlatformError` where `script` exists already or cannot be
/// written; where it cannot be written to its end, standard error says so at the end.
std::unique_ptr<Platform> makeRecordingPlatform(Platform& inner, const std::filesystem::path& script,
                                                const std::string& furtherOptions = "");

}  // namespace vorn
