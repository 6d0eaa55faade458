/// The keys of a browser in the game's two code spaces. Pure.
#pragma once

#include <string_view>

#include "platform/common/key_codes.h"

namespace vorn {

/// The key at the place that browsers call `code` ("KeyA", "ControlLeft"); null where the game knows none.
const Key* keyAtPlace(std::string_view code);

/// The key whose virtual-key code a press gives: by the letter or sign that it types where the game
/// knows that, else by its place. On the numeric pad `key` tells whether NumLock is off.
const Key* menuKey(std::string_view code, std::string_view key);

}  // namespace vorn
