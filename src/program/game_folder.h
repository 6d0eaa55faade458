/// Which folder a player's game lives in, and the sounds that have to lie there.
#pragma once

#include <filesystem>

namespace vorn {

struct GameFolder {
  std::filesystem::path path;
  /// Asked for, or the player's own: programs in it are his. A folder that was
  /// merely found may hold anybody's.
  bool isTrusted;
};

/// `asked` where it is not empty; else the current folder when it holds the
/// sounds, else the player's own data folder (made where there is none).
GameFolder gameFolder(const std::filesystem::path& asked);

/// Puts the sounds that are missing or out of date into `folder`: the installed ones, or, where none
/// are installed, what the game can make. Waits for it; what cannot be had is left to the game's own check.
void fillWithSounds(const std::filesystem::path& folder);

}  // namespace vorn
