#include "platform/common/key_codes.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

namespace vorn {
namespace {

struct ExpectedKey {
  const char* name;
  int virtualKeyCode, keyCode;
};

constexpr ExpectedKey kExpectedKeys[] = {
    {"A", 65, 30},
    {"Z", 90, 44},
    {"Q", 81, 16},
    {"0", 48, 11},
    {"1", 49, 2},
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
    {"LeftShift", 16, 42},
    {"RightShift", 16, 54},
    {"LeftCtrl", 17, 29},
    {"RightCtrl", 17, 157},
    {"LeftAlt", 18, 56},
    {"RightAlt", 18, 184},
    {"F1", 112, 59},
    {"F10", 121, 68},
    {"F11", 122, 87},
    {"F12", 123, 88},
    {"Numpad0", 96, 82},
    {"Numpad7", 103, 71},
    {"Numpad9", 105, 73},
    {"NumpadEnter", 13, 156},
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
};

TEST(KeyCodes, EachKeyHasBothCodes) {
  for (const ExpectedKey& expected : kExpectedKeys) {
    SCOPED_TRACE(expected.name);
    const Key* key = keyByName(expected.name);
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(key->virtualKeyCode, expected.virtualKeyCode);
    EXPECT_EQ(key->keyCode, expected.keyCode);
  }
}

TEST(KeyCodes, EveryScriptNameIsThere) {
  std::string names =
      "Enter Escape Backspace Tab Space Up Down Left Right Home End PageUp PageDown Insert Delete LeftShift "
      "RightShift LeftCtrl RightCtrl LeftAlt RightAlt NumpadEnter Comma Period Minus Equals Semicolon "
      "Apostrophe Slash Backslash LeftBracket RightBracket Grave CapsLock";
  for (char c = 'A'; c <= 'Z'; ++c) names += std::string(" ") + c;
  for (char c = '0'; c <= '9'; ++c) names += std::string(" ") + c + " Numpad" + c;
  for (int n = 1; n <= 12; ++n) names += " F" + std::to_string(n);
  std::istringstream words(names);
  for (std::string name; words >> name;) EXPECT_NE(keyByName(name), nullptr) << name;
}

TEST(KeyCodes, NoTwoKeysShareANameOrAKeyCode) {
  std::set<std::string_view> names;
  std::set<int> codes;
  for (const Key& key : allKeys()) {
    EXPECT_TRUE(names.insert(key.name).second) << key.name;
    EXPECT_TRUE(codes.insert(key.keyCode).second) << key.name;
    EXPECT_GT(key.keyCode, 0) << key.name;
    EXPECT_LT(key.keyCode, 256) << key.name;
    EXPECT_GT(key.virtualKeyCode, 0) << key.name;
    EXPECT_LT(key.virtualKeyCode, 256) << key.name;
  }
}

TEST(KeyCodes, UnknownKeysAreNotFound) {
  EXPECT_EQ(keyByName("enter"), nullptr);
  EXPECT_EQ(keyByName(""), nullptr);
}

TEST(KeyCodes, CharactersAreTypedByTheirKeys) {
  EXPECT_EQ(strokeFor('a')->key->name, "A");
  EXPECT_FALSE(strokeFor('a')->shifted);
  EXPECT_EQ(strokeFor('Z')->key->name, "Z");
  EXPECT_TRUE(strokeFor('Z')->shifted);
  EXPECT_EQ(strokeFor('0')->key->name, "0");
  EXPECT_FALSE(strokeFor('0')->shifted);
  EXPECT_EQ(strokeFor(' ')->key->name, "Space");
  for (const char c : {'.', '-', '@', '[', '`', '{', '/', ':', '\n', '\xE9'}) {
    EXPECT_FALSE(strokeFor(c).has_value()) << int{c};
  }
}

}  // namespace
}  // namespace vorn
