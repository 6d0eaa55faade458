#include "platform/web/page_keys.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace vorn {
namespace {

using Named = std::pair<std::string_view, std::string_view>;

/// Where a browser's name of a place is not the game's.
constexpr Named kPlaces[] = {
    {"ArrowUp", "Up"},
    {"ArrowDown", "Down"},
    {"ArrowLeft", "Left"},
    {"ArrowRight", "Right"},
    {"ShiftLeft", "LeftShift"},
    {"ShiftRight", "RightShift"},
    {"ControlLeft", "LeftCtrl"},
    {"ControlRight", "RightCtrl"},
    {"AltLeft", "LeftAlt"},
    {"AltRight", "RightAlt"},
    {"MetaLeft", "LeftWindows"},
    {"MetaRight", "RightWindows"},
    {"OSLeft", "LeftWindows"},
    {"OSRight", "RightWindows"},
    {"ContextMenu", "Menu"},
    {"NumpadAdd", "NumpadPlus"},
    {"NumpadSubtract", "NumpadMinus"},
    {"NumpadDecimal", "NumpadPeriod"},
    {"NumpadDivide", "NumpadSlash"},
    {"Equal", "Equals"},
    {"Quote", "Apostrophe"},
    {"BracketLeft", "LeftBracket"},
    {"BracketRight", "RightBracket"},
    {"Backquote", "Grave"},
    {"IntlBackslash", "NonUsBackslash"},
    {"IntlHash", "Backslash"},
};

constexpr Named kSigns[] = {
    {",", "Comma"},       {".", "Period"},       {"-", "Minus"}, {"=", "Equals"},
    {";", "Semicolon"},   {"'", "Apostrophe"},   {"/", "Slash"}, {"\\", "Backslash"},
    {"[", "LeftBracket"}, {"]", "RightBracket"}, {"`", "Grave"},
};

template <std::size_t kCount>
std::string_view lookUp(const Named (&table)[kCount], std::string_view name) {
  const auto* const found =
      std::find_if(std::begin(table), std::end(table), [&](const Named& row) { return row.first == name; });
  return found == std::end(table) ? std::string_view() : found->second;
}

/// The key that types this letter or sign.
const Key* keyOfSign(std::string_view key) {
  if (key.size() != 1) {
    return nullptr;
  }
  char letter = key.front();
  if (letter >= 'a' && letter <= 'z') {
    letter = static_cast<char>(letter - 'a' + 'A');
  }
  if (letter >= 'A' && letter <= 'Z') {
    return keyByName({&letter, 1});
  }
  const std::string_view name = lookUp(kSigns, key);
  return name.empty() ? nullptr : keyByName(name);
}

}  // namespace

const Key* keyAtPlace(std::string_view code) {
  for (const std::string_view prefix : {"Key", "Digit"}) {
    if (code.size() == prefix.size() + 1 && code.starts_with(prefix)) {
      return keyByName(code.substr(prefix.size()));
    }
  }
  const std::string_view name = lookUp(kPlaces, code);
  return keyByName(name.empty() ? code : name);
}

const Key* menuKey(std::string_view code, std::string_view key) {
  if (code.starts_with("Numpad")) {
    // With NumLock off the pad's keys are called by what they do.
    const bool isCursor = key.starts_with("Arrow") || key == "Insert" || key == "Delete" || key == "Home" ||
                          key == "End" || key.starts_with("Page");
    return keyAtPlace(isCursor ? key : code);
  }
  const Key* const bySign = code.starts_with("Digit") ? nullptr : keyOfSign(key);
  return bySign != nullptr ? bySign : keyAtPlace(code);
}

}  // namespace vorn
