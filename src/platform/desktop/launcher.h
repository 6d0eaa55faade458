/// Starts another program.
#pragma once

#include <filesystem>

namespace vorn {

/// Starts `program`, without arguments and in its own folder, in a session of its
/// own: it lives on when the game ends. Does not wait for it. Throws
/// `PlatformError` where it cannot be started.
void launch(const std::filesystem::path& program);

}  // namespace vorn
