/// What every finished sound file must fulfil before it is handed on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "layout.h"

namespace vorn::sounds {

/// The largest byte position the game plays `name` from; -1 where it only ever
/// plays from the start.
int largestPositionPlayed(std::string_view name);

/// Everything wrong with the file at `path`, a sentence each; empty when it is
/// right. Reads the file: its size, item figures, format, and whether the
/// positions that the game plays from lie inside the recording.
std::vector<std::string> faultsOfFile(const Layout& layout, const std::string& path);

}  // namespace vorn::sounds
