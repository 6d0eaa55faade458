#include "platform/common/key_codes.h"

#include <algorithm>
#include <iterator>

namespace vorn {
namespace {

constexpr Key kKeys[] = {
    {"A", 65, 30},
    {"B", 66, 48},
    {"C", 67, 46},
    {"D", 68, 32},
    {"E", 69, 18},
    {"F", 70, 33},
    {"G", 71, 34},
    {"H", 72, 35},
    {"I", 73, 23},
    {"J", 74, 36},
    {"K", 75, 37},
    {"L", 76, 38},
    {"M", 77, 50},
    {"N", 78, 49},
    {"O", 79, 24},
    {"P", 80, 25},
    {"Q", 81, 16},
    {"R", 82, 19},
    {"S", 83, 31},
    {"T", 84, 20},
    {"U", 85, 22},
    {"V", 86, 47},
    {"W", 87, 17},
    {"X", 88, 45},
    {"Y", 89, 21},
    {"Z", 90, 44},
    {"0", 48, 11},
    {"1", 49, 2},
    {"2", 50, 3},
    {"3", 51, 4},
    {"4", 52, 5},
    {"5", 53, 6},
    {"6", 54, 7},
    {"7", 55, 8},
    {"8", 56, 9},
    {"9", 57, 10},
    {"Enter", 13, 28},
    {"Escape", 27, 1},
    {"Backspace", 8, 14},
    {"Tab", 9, 15},
    {"Space", 32, 57},
    {"Up", 38, 200},
    {"Down", 40, 208},
    {"Left", 37, 203},
    {"Right", 39, 205},
    {"Home", 36, 199},
    {"End", 35, 207},
    {"PageUp", 33, 201},
    {"PageDown", 34, 209},
    {"Insert", 45, 210},
    {"Delete", 46, 211},
    // A window does not tell left from right.
    {"LeftShift", 16, 42},
    {"RightShift", 16, 54},
    {"LeftCtrl", 17, 29},
    {"RightCtrl", 17, 157},
    {"LeftAlt", 18, 56},
    {"RightAlt", 18, 184},
    {"F1", 112, 59},
    {"F2", 113, 60},
    {"F3", 114, 61},
    {"F4", 115, 62},
    {"F5", 116, 63},
    {"F6", 117, 64},
    {"F7", 118, 65},
    {"F8", 119, 66},
    {"F9", 120, 67},
    {"F10", 121, 68},
    {"F11", 122, 87},
    {"F12", 123, 88},
    {"Numpad0", 96, 82},
    {"Numpad1", 97, 79},
    {"Numpad2", 98, 80},
    {"Numpad3", 99, 81},
    {"Numpad4", 100, 75},
    {"Numpad5", 101, 76},
    {"Numpad6", 102, 77},
    {"Numpad7", 103, 71},
    {"Numpad8", 104, 72},
    {"Numpad9", 105, 73},
    {"NumpadEnter", 13, 156},
    {"NumpadMultiply", 106, 55},
    {"NumpadPlus", 107, 78},
    {"NumpadMinus", 109, 74},
    {"NumpadPeriod", 110, 83},
    {"NumpadSlash", 111, 181},
    {"Comma", 188, 51},
    {"Period", 190, 52},
    {"Minus", 189, 12},
    {"Equals", 187, 13},
    {"Semicolon", 186, 39},
    {"Apostrophe", 222, 40},
    {"Slash", 191, 53},
    {"Backslash", 220, 43},
    {"LeftBracket", 219, 26},
    {"RightBracket", 221, 27},
    {"Grave", 192, 41},
    {"CapsLock", 20, 58},
    {"NumLock", 144, 69},
    {"ScrollLock", 145, 70},
    {"Pause", 19, 197},
    {"PrintScreen", 44, 183},
    {"LeftWindows", 91, 219},
    {"RightWindows", 92, 220},
    {"Menu", 93, 221},
    {"NonUsBackslash", 226, 86},
};

}  // namespace

std::span<const Key> allKeys() {
  return kKeys;
}

const Key* keyByName(std::string_view name) {
  const auto* const found =
      std::find_if(std::begin(kKeys), std::end(kKeys), [&](const Key& key) { return key.name == name; });
  return found == std::end(kKeys) ? nullptr : found;
}

std::optional<KeyStroke> strokeFor(char character) {
  if (character == ' ') return KeyStroke{keyByName("Space"), false};
  const bool isSmall = character >= 'a' && character <= 'z';
  const bool isCapital = character >= 'A' && character <= 'Z';
  const bool isDigit = character >= '0' && character <= '9';
  if (!isSmall && !isCapital && !isDigit) return std::nullopt;
  const char named = isSmall ? static_cast<char>(character - 'a' + 'A') : character;
  return KeyStroke{keyByName({&named, 1}), isCapital};
}

}  // namespace vorn
