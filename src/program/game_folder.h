/// Which folder a player's game lives in, and the sounds that have to lie there.
#pragma once

#include <filesystem>

namespace vorn {

/// `asked` where it is not empty; else the current folder when it holds the
/// sounds, else the player's own data folder (made where there is none).
std::filesystem::path gameFolder(const std::filesystem::path& asked);

/// Puts the sounds that are missing or out of date into `folder`: the installed ones, or, where none
/// are installed, made by the tool that lies beside this program. Waits for it; what cannot be had is
/// left to the game's own check.
void fillWithSounds(const std::filesystem::path& folder);

}  // namespace vorn
