/// The game's texts are Windows-1252, a byte a character; the outside world
/// reads UTF-8. Nothing here waits or fails.
#pragma once

#include <string>
#include <string_view>

namespace vorn {

/// `text` in UTF-8. The five codes without a character become the control
/// characters of the same number.
std::string utf8FromWindows1252(std::string_view text);

}  // namespace vorn
