#include "platform/web/page_keys.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

std::string_view placeName(std::string_view code) {
  const Key* const key = keyAtPlace(code);
  return key == nullptr ? "none" : key->name;
}

std::string_view menuName(std::string_view code, std::string_view key) {
  const Key* const found = menuKey(code, key);
  return found == nullptr ? "none" : found->name;
}

TEST(PageKeys, EveryKeyThatTheGameKnowsHasAPlace) {
  constexpr std::string_view kCodes[] = {
      "KeyA",           "Digit7",       "Enter",          "Escape",        "Backspace",    "Tab",
      "Space",          "ArrowUp",      "Home",           "PageDown",      "Insert",       "Delete",
      "ShiftLeft",      "ControlRight", "AltLeft",        "F12",           "Numpad5",      "NumpadEnter",
      "NumpadMultiply", "NumpadAdd",    "NumpadSubtract", "NumpadDecimal", "NumpadDivide", "Comma",
      "Period",         "Minus",        "Equal",          "Semicolon",     "Quote",        "Slash",
      "Backslash",      "BracketLeft",  "BracketRight",   "Backquote",     "CapsLock",     "NumLock",
      "ScrollLock",     "Pause",        "PrintScreen",    "MetaLeft",      "ContextMenu",  "IntlBackslash"};
  for (const std::string_view code : kCodes) {
    EXPECT_NE(placeName(code), "none") << code;
  }
  EXPECT_EQ(placeName("ControlLeft"), "LeftCtrl");
  EXPECT_EQ(placeName("ArrowLeft"), "Left");
  EXPECT_EQ(placeName("BrowserBack"), "none");
}

TEST(PageKeys, AMenuAsksForTheLetterOnTheKeyAndARaceForItsPlace) {
  EXPECT_EQ(menuName("KeyQ", "a"), "A");  // where A and Q have changed places
  EXPECT_EQ(menuName("KeyA", "A"), "A");
  EXPECT_EQ(menuName("KeyA", "\xD1\x84"), "A");  // a letter that the game does not know
  EXPECT_EQ(menuName("Digit1", "&"), "1");
  EXPECT_EQ(menuName("KeyM", ";"), "Semicolon");
}

TEST(PageKeys, ThePadMovesTheCursorWhileNumLockIsOff) {
  EXPECT_EQ(menuName("Numpad8", "8"), "Numpad8");
  EXPECT_EQ(menuName("Numpad8", "ArrowUp"), "Up");
  EXPECT_EQ(menuName("Numpad0", "Insert"), "Insert");
  EXPECT_EQ(menuName("NumpadEnter", "Enter"), "NumpadEnter");
}

}  // namespace
}  // namespace vorn
