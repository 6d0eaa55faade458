/// The keyboard as SDL sees it, in the game's two code spaces. The right sort of
/// code for each use: a menu asks for the letter printed on the key, a race for
/// the key's place. Nothing here waits; SDL's video must be up.
#pragma once

#include <SDL_keyboard.h>

#include "platform/common/key_codes.h"
#include "platform/common/key_latch.h"
#include "platform/input_devices.h"

namespace vorn {

/// The key at a place of the keyboard; null where the game knows none.
const Key* keyAt(SDL_Scancode place);

/// The key whose virtual-key code a press of `pressed` gives: by its letter or
/// sign where the layout gives it one that the game knows, else by its place.
/// The numeric pad moves the cursor while NumLock is off.
const Key* menuKey(const SDL_Keysym& pressed);

/// Shift 1, Ctrl 2, Alt 4, added up.
int shiftState(std::uint16_t modifiers);

class SdlKeyboard : public KeyboardDevice {
 public:
  /// `taps`, not owned, is told of each key that goes down or up.
  explicit SdlKeyboard(KeyLatch& taps) : taps_(taps) {}
  void SetCommonDataFormat(int format) override;
  void SetCooperativeLevel(int) override {}  // SDL reads the keyboard without claiming it
  void Acquire() override {}
  KeyboardState GetDeviceStateKeyboard() override;

 private:
  KeyLatch& taps_;
};

}  // namespace vorn
