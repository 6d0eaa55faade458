/// The keys of a keyboard with both numbers the game knows them by: menus use
/// virtual-key codes, race controls use key codes. Nothing here waits.
#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace vorn {

/// One physical key. Two keys may share a virtual-key code (both Shifts do), never a key code.
struct Key {
  std::string_view name;  ///< as scripts and traces write it
  int virtualKeyCode;     ///< what the window's key-down event carries
  int keyCode;            ///< its place in `KeyboardState`, 1 .. 255
};

std::span<const Key> allKeys();

/// The key with this name, in exactly this spelling; null where there is none.
const Key* keyByName(std::string_view name);

/// How a character is typed.
struct KeyStroke {
  const Key* key;
  bool shifted;  ///< Shift goes before it
};

/// The stroke that types a letter, a digit or a blank; nothing for any other character.
std::optional<KeyStroke> strokeFor(char character);

}  // namespace vorn
