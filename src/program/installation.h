/// What an installed game has beside its program, and where the player's own files go.
#pragma once

#include <filesystem>

namespace vorn {

/// The folder of the installed sounds, found from the program's own place, so that an
/// installed game may be moved as a whole. Need not exist: a game that runs where it
/// was built has none.
std::filesystem::path installedSounds();

/// The folder in which the system has programs keep what belongs to their user.
std::filesystem::path playersData();

/// What is done where sounds are missing in `folder` that are not installed: those that the
/// game can make are made. Says what it does on standard error, and waits for it.
void makeSounds(const std::filesystem::path& folder);

}  // namespace vorn
