#include "platform/desktop/keyboard.h"

#include <SDL_timer.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "platform/errors.h"

namespace vorn {
namespace {

struct Place {
  SDL_Scancode scancode;
  std::string_view key;
};

constexpr Place kPlaces[] = {
    {SDL_SCANCODE_A, "A"},
    {SDL_SCANCODE_B, "B"},
    {SDL_SCANCODE_C, "C"},
    {SDL_SCANCODE_D, "D"},
    {SDL_SCANCODE_E, "E"},
    {SDL_SCANCODE_F, "F"},
    {SDL_SCANCODE_G, "G"},
    {SDL_SCANCODE_H, "H"},
    {SDL_SCANCODE_I, "I"},
    {SDL_SCANCODE_J, "J"},
    {SDL_SCANCODE_K, "K"},
    {SDL_SCANCODE_L, "L"},
    {SDL_SCANCODE_M, "M"},
    {SDL_SCANCODE_N, "N"},
    {SDL_SCANCODE_O, "O"},
    {SDL_SCANCODE_P, "P"},
    {SDL_SCANCODE_Q, "Q"},
    {SDL_SCANCODE_R, "R"},
    {SDL_SCANCODE_S, "S"},
    {SDL_SCANCODE_T, "T"},
    {SDL_SCANCODE_U, "U"},
    {SDL_SCANCODE_V, "V"},
    {SDL_SCANCODE_W, "W"},
    {SDL_SCANCODE_X, "X"},
    {SDL_SCANCODE_Y, "Y"},
    {SDL_SCANCODE_Z, "Z"},
    {SDL_SCANCODE_0, "0"},
    {SDL_SCANCODE_1, "1"},
    {SDL_SCANCODE_2, "2"},
    {SDL_SCANCODE_3, "3"},
    {SDL_SCANCODE_4, "4"},
    {SDL_SCANCODE_5, "5"},
    {SDL_SCANCODE_6, "6"},
    {SDL_SCANCODE_7, "7"},
    {SDL_SCANCODE_8, "8"},
    {SDL_SCANCODE_9, "9"},
    {SDL_SCANCODE_RETURN, "Enter"},
    {SDL_SCANCODE_ESCAPE, "Escape"},
    {SDL_SCANCODE_BACKSPACE, "Backspace"},
    {SDL_SCANCODE_TAB, "Tab"},
    {SDL_SCANCODE_SPACE, "Space"},
    {SDL_SCANCODE_UP, "Up"},
    {SDL_SCANCODE_DOWN, "Down"},
    {SDL_SCANCODE_LEFT, "Left"},
    {SDL_SCANCODE_RIGHT, "Right"},
    {SDL_SCANCODE_HOME, "Home"},
    {SDL_SCANCODE_END, "End"},
    {SDL_SCANCODE_PAGEUP, "PageUp"},
    {SDL_SCANCODE_PAGEDOWN, "PageDown"},
    {SDL_SCANCODE_INSERT, "Insert"},
    {SDL_SCANCODE_DELETE, "Delete"},
    {SDL_SCANCODE_LSHIFT, "LeftShift"},
    {SDL_SCANCODE_RSHIFT, "RightShift"},
    {SDL_SCANCODE_LCTRL, "LeftCtrl"},
    {SDL_SCANCODE_RCTRL, "RightCtrl"},
    {SDL_SCANCODE_LALT, "LeftAlt"},
    {SDL_SCANCODE_RALT, "RightAlt"},
    {SDL_SCANCODE_F1, "F1"},
    {SDL_SCANCODE_F2, "F2"},
    {SDL_SCANCODE_F3, "F3"},
    {SDL_SCANCODE_F4, "F4"},
    {SDL_SCANCODE_F5, "F5"},
    {SDL_SCANCODE_F6, "F6"},
    {SDL_SCANCODE_F7, "F7"},
    {SDL_SCANCODE_F8, "F8"},
    {SDL_SCANCODE_F9, "F9"},
    {SDL_SCANCODE_F10, "F10"},
    {SDL_SCANCODE_F11, "F11"},
    {SDL_SCANCODE_F12, "F12"},
    {SDL_SCANCODE_KP_0, "Numpad0"},
    {SDL_SCANCODE_KP_1, "Numpad1"},
    {SDL_SCANCODE_KP_2, "Numpad2"},
    {SDL_SCANCODE_KP_3, "Numpad3"},
    {SDL_SCANCODE_KP_4, "Numpad4"},
    {SDL_SCANCODE_KP_5, "Numpad5"},
    {SDL_SCANCODE_KP_6, "Numpad6"},
    {SDL_SCANCODE_KP_7, "Numpad7"},
    {SDL_SCANCODE_KP_8, "Numpad8"},
    {SDL_SCANCODE_KP_9, "Numpad9"},
    {SDL_SCANCODE_KP_ENTER, "NumpadEnter"},
    {SDL_SCANCODE_KP_MULTIPLY, "NumpadMultiply"},
    {SDL_SCANCODE_KP_PLUS, "NumpadPlus"},
    {SDL_SCANCODE_KP_MINUS, "NumpadMinus"},
    {SDL_SCANCODE_KP_PERIOD, "NumpadPeriod"},
    {SDL_SCANCODE_KP_DIVIDE, "NumpadSlash"},
    {SDL_SCANCODE_COMMA, "Comma"},
    {SDL_SCANCODE_PERIOD, "Period"},
    {SDL_SCANCODE_MINUS, "Minus"},
    {SDL_SCANCODE_EQUALS, "Equals"},
    {SDL_SCANCODE_SEMICOLON, "Semicolon"},
    {SDL_SCANCODE_APOSTROPHE, "Apostrophe"},
    {SDL_SCANCODE_SLASH, "Slash"},
    {SDL_SCANCODE_BACKSLASH, "Backslash"},
    {SDL_SCANCODE_NONUSHASH, "Backslash"},  // the same key on keyboards with the other Enter
    {SDL_SCANCODE_LEFTBRACKET, "LeftBracket"},
    {SDL_SCANCODE_RIGHTBRACKET, "RightBracket"},
    {SDL_SCANCODE_GRAVE, "Grave"},
    {SDL_SCANCODE_CAPSLOCK, "CapsLock"},
    {SDL_SCANCODE_NUMLOCKCLEAR, "NumLock"},
    {SDL_SCANCODE_SCROLLLOCK, "ScrollLock"},
    {SDL_SCANCODE_PAUSE, "Pause"},
    {SDL_SCANCODE_PRINTSCREEN, "PrintScreen"},
    {SDL_SCANCODE_LGUI, "LeftWindows"},
    {SDL_SCANCODE_RGUI, "RightWindows"},
    {SDL_SCANCODE_APPLICATION, "Menu"},
    {SDL_SCANCODE_NONUSBACKSLASH, "NonUsBackslash"},
};

/// What the numeric pad does while NumLock is off.
constexpr Place kCursorPad[] = {
    {SDL_SCANCODE_KP_0, "Insert"},      {SDL_SCANCODE_KP_1, "End"},  {SDL_SCANCODE_KP_2, "Down"},
    {SDL_SCANCODE_KP_3, "PageDown"},    {SDL_SCANCODE_KP_4, "Left"}, {SDL_SCANCODE_KP_6, "Right"},
    {SDL_SCANCODE_KP_7, "Home"},        {SDL_SCANCODE_KP_8, "Up"},   {SDL_SCANCODE_KP_9, "PageUp"},
    {SDL_SCANCODE_KP_PERIOD, "Delete"},
};

struct Sign {
  SDL_Keycode sign;
  std::string_view key;
};

constexpr Sign kSigns[] = {
    {SDLK_COMMA, "Comma"},
    {SDLK_PERIOD, "Period"},
    {SDLK_MINUS, "Minus"},
    {SDLK_EQUALS, "Equals"},
    {SDLK_SEMICOLON, "Semicolon"},
    {SDLK_QUOTE, "Apostrophe"},
    {SDLK_SLASH, "Slash"},
    {SDLK_BACKSLASH, "Backslash"},
    {SDLK_LEFTBRACKET, "LeftBracket"},
    {SDLK_RIGHTBRACKET, "RightBracket"},
    {SDLK_BACKQUOTE, "Grave"},
};

using KeysByPlace = std::array<const Key*, SDL_NUM_SCANCODES>;

template <std::size_t kCount>
KeysByPlace keysByPlace(const Place (&places)[kCount]) {
  KeysByPlace keys{};
  for (const Place& place : places) {
    keys[place.scancode] = keyByName(place.key);
  }
  return keys;
}

/// The key with this letter or sign on it.
const Key* keyOfSign(SDL_Keycode sign) {
  if (sign >= SDLK_a && sign <= SDLK_z) {
    const char letter = static_cast<char>(sign - SDLK_a + 'A');
    return keyByName({&letter, 1});
  }
  for (const Sign& known : kSigns) {
    if (known.sign == sign) {
      return keyByName(known.key);
    }
  }
  return nullptr;
}

/// Digits stand on their row whatever sign the layout gives without Shift.
bool isInDigitRow(SDL_Scancode place) {
  return place >= SDL_SCANCODE_1 && place <= SDL_SCANCODE_0;
}

}  // namespace

const Key* keyAt(SDL_Scancode place) {
  static const KeysByPlace kKeys = keysByPlace(kPlaces);
  return place >= 0 && place < SDL_NUM_SCANCODES ? kKeys[place] : nullptr;
}

const Key* menuKey(const SDL_Keysym& pressed) {
  static const KeysByPlace kCursorKeys = keysByPlace(kCursorPad);
  const bool isCursor =
      (pressed.mod & KMOD_NUM) == 0 && pressed.scancode >= 0 && pressed.scancode < SDL_NUM_SCANCODES;
  if (isCursor && kCursorKeys[pressed.scancode] != nullptr) {
    return kCursorKeys[pressed.scancode];
  }
  const Key* bySign = isInDigitRow(pressed.scancode) ? nullptr : keyOfSign(pressed.sym);
  return bySign != nullptr ? bySign : keyAt(pressed.scancode);
}

int shiftState(std::uint16_t modifiers) {
  constexpr std::pair<int, int> kStates[] = {{KMOD_SHIFT, 1}, {KMOD_CTRL, 2}, {KMOD_ALT, 4}};
  int state = 0;
  for (const auto& [modifier, value] : kStates) {
    state += (modifiers & modifier) != 0 ? value : 0;
  }
  return state;
}

void SdlKeyboard::SetCommonDataFormat(int format) {
  constexpr int kKeyboard = 1;
  if (format != kKeyboard) {
    throw PlatformError("SetCommonDataFormat", std::to_string(format), "this is a keyboard");
  }
}

KeyboardState SdlKeyboard::GetDeviceStateKeyboard() {
  int count = 0;
  const std::uint8_t* down = SDL_GetKeyboardState(&count);
  KeyboardState state{};
  for (int place = 0; place < count; ++place) {
    const Key* key = down[place] != 0 ? keyAt(static_cast<SDL_Scancode>(place)) : nullptr;
    if (key != nullptr) {
      state[static_cast<std::size_t>(key->keyCode)] = KeyLatch::kKeyIsDown;
    }
  }
  return taps_.read(state, SDL_GetTicks());
}

}  // namespace vorn
