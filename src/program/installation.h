/// What an installed game has beside its program. Nothing here waits.
#pragma once

#include <filesystem>

namespace vorn {

/// The file that this process was started from, links resolved; empty where it cannot be told.
std::filesystem::path programFile();

/// The folder of the installed sounds, found from the program's own place, so that an
/// installed game may be moved as a whole. Need not exist: a game that runs where it
/// was built has none.
std::filesystem::path installedSounds();

/// Lets the embedded voice read the data that a portable game carries, where it does.
/// Before the voice's first use.
void useInstalledVoiceData();

}  // namespace vorn
