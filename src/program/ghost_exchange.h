/// Ghosts from and for friends, without starting the game. What has been done, or why not, goes to standard
/// output and standard error.
#pragma once

#include <filesystem>

namespace vorn {

/// Takes in the laps that a friend has sent as `file`. `folder`: of the game, as it was asked for; may be
/// empty. Returns the exit status.
int importGhost(const std::filesystem::path& folder, const std::filesystem::path& file);

/// Copies the player's laps on track 1 .. 10 to `file`, where there is no file yet. Returns the exit status.
int exportGhost(const std::filesystem::path& folder, int track, const std::filesystem::path& file);

}  // namespace vorn
