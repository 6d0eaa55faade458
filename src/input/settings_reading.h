/// The player's settings files as they are read at start-up, before there is a
/// voice: what is to be said about them waits in `startUpMessages`.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "state/game_state.h"

namespace vorn {

/// The text of a settings file; nothing where there is none, or it cannot be
/// read, which will be said.
std::optional<std::string> settingsFileText(GameState& g, const char* name);

/// Loads the file's numbers into `fields`, as far as it goes. A field whose text
/// is no number keeps its value, which will be said.
void loadSettings(GameState& g, const char* name, const std::vector<int*>& fields);

}  // namespace vorn
