#include "platform/desktop/keyboard.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <set>

#include "platform/errors.h"

namespace vorn {
namespace {

/// The virtual-key code of a press; 0: none.
int menuCode(SDL_Scancode place, SDL_Keycode sign, int modifiers = KMOD_NUM) {
  const Key* key = menuKey({place, sign, static_cast<std::uint16_t>(modifiers), 0});
  return key == nullptr ? 0 : key->virtualKeyCode;
}

TEST(Keyboard, EveryKeyOfTheGameHasAPlace) {
  std::set<std::string_view> reached;
  for (int place = 0; place < SDL_NUM_SCANCODES; ++place) {
    if (const Key* key = keyAt(static_cast<SDL_Scancode>(place))) {
      reached.insert(key->name);
    }
  }
  for (const Key& key : allKeys()) {
    EXPECT_TRUE(reached.contains(key.name)) << key.name;
  }
}

TEST(Keyboard, PlacesAreThoseOfTheRaceControls) {
  const auto codeAt = [](SDL_Scancode place) { return keyAt(place)->keyCode; };
  EXPECT_EQ(codeAt(SDL_SCANCODE_RSHIFT), 54);
  EXPECT_EQ(codeAt(SDL_SCANCODE_RCTRL), 157);
  EXPECT_EQ(codeAt(SDL_SCANCODE_LCTRL), 29);
  EXPECT_EQ(codeAt(SDL_SCANCODE_LSHIFT), 42);
  EXPECT_EQ(codeAt(SDL_SCANCODE_LEFT), 203);
  EXPECT_EQ(codeAt(SDL_SCANCODE_RIGHT), 205);
  EXPECT_EQ(codeAt(SDL_SCANCODE_UP), 200);
  EXPECT_EQ(codeAt(SDL_SCANCODE_DOWN), 208);
  EXPECT_EQ(keyAt(SDL_SCANCODE_AUDIOMUTE), nullptr);
  EXPECT_EQ(keyAt(SDL_SCANCODE_UNKNOWN), nullptr);
}

TEST(Keyboard, MenusGetTheUsualCodes) {
  EXPECT_EQ(menuCode(SDL_SCANCODE_RETURN, SDLK_RETURN), 13);
  EXPECT_EQ(menuCode(SDL_SCANCODE_ESCAPE, SDLK_ESCAPE), 27);
  EXPECT_EQ(menuCode(SDL_SCANCODE_UP, SDLK_UP), 38);
  EXPECT_EQ(menuCode(SDL_SCANCODE_DOWN, SDLK_DOWN), 40);
  EXPECT_EQ(menuCode(SDL_SCANCODE_F1, SDLK_F1), 112);
  EXPECT_EQ(menuCode(SDL_SCANCODE_LSHIFT, SDLK_LSHIFT), 16);
  EXPECT_EQ(menuCode(SDL_SCANCODE_Y, SDLK_y), 89);
  EXPECT_EQ(menuCode(SDL_SCANCODE_KP_ENTER, SDLK_KP_ENTER), 13);
  EXPECT_EQ(menuCode(SDL_SCANCODE_AUDIOMUTE, SDLK_AUDIOMUTE), 0);
}

TEST(Keyboard, OnOtherLayoutsMenusGetTheLetterOnTheKey) {
  EXPECT_EQ(menuCode(SDL_SCANCODE_Y, SDLK_z), 'Z');          // German
  EXPECT_EQ(menuCode(SDL_SCANCODE_Q, SDLK_a), 'A');          // French
  EXPECT_EQ(menuCode(SDL_SCANCODE_SEMICOLON, SDLK_m), 'M');  // French
  EXPECT_EQ(menuCode(SDL_SCANCODE_M, SDLK_COMMA), 188);      // French
  EXPECT_EQ(menuCode(SDL_SCANCODE_6, SDLK_MINUS), '6');      // French digits need Shift for the digit
  EXPECT_EQ(menuCode(SDL_SCANCODE_SLASH, SDLK_MINUS), 189);  // German
  EXPECT_EQ(menuCode(SDL_SCANCODE_F, 0x0430), 'F');          // Russian: no letter the game knows
  EXPECT_EQ(keyAt(SDL_SCANCODE_Q)->keyCode, 16);             // in a race, the place alone counts
}

TEST(Keyboard, TheNumericPadFollowsNumLock) {
  EXPECT_EQ(menuCode(SDL_SCANCODE_KP_8, SDLK_KP_8, KMOD_NUM), 104);
  EXPECT_EQ(menuCode(SDL_SCANCODE_KP_8, SDLK_KP_8, 0), 38);
  EXPECT_EQ(menuCode(SDL_SCANCODE_KP_2, SDLK_KP_2, KMOD_SHIFT), 40);
  EXPECT_EQ(menuCode(SDL_SCANCODE_8, SDLK_8, 0), '8');
}

TEST(Keyboard, ShiftStatesAddUp) {
  EXPECT_EQ(shiftState(KMOD_NUM | KMOD_CAPS), 0);
  EXPECT_EQ(shiftState(KMOD_RSHIFT), 1);
  EXPECT_EQ(shiftState(KMOD_LCTRL), 2);
  EXPECT_EQ(shiftState(KMOD_LSHIFT | KMOD_RCTRL | KMOD_RALT), 7);
}

TEST(Keyboard, TheDeviceIsAKeyboard) {
  KeyLatch taps;
  SdlKeyboard keyboard(taps);
  EXPECT_NO_THROW(keyboard.SetCommonDataFormat(1));
  EXPECT_THROW(keyboard.SetCommonDataFormat(3), PlatformError);
}

}  // namespace
}  // namespace vorn
