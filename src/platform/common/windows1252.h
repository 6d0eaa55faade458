/// The game's texts are Windows-1252, a byte a character; the outside world
/// reads UTF-8. Nothing here waits or fails.
#pragma once

#include <string>
#include <string_view>

namespace vorn {

/// `text` in UTF-8. The five codes without a character become the control
/// characters of the same number.
std::string utf8FromWindows1252(std::string_view text);

/// `text`, UTF-8, in Windows-1252; a question mark for a character that it does not have.
std::string windows1252FromUtf8(std::string_view text);

/// `text` in UTF-8 with a blank in place of every control character and of every code
/// without a character: what may be given to a synthesiser, a terminal or a braille display.
std::string printableUtf8(std::string_view text);

}  // namespace vorn
