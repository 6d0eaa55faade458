/// Keyboard and game controller as the game knows them. No call waits.
#pragma once

#include <array>
#include <cstdint>

namespace vorn {

/// Which keys are down, by key code 0..255; not zero: down.
using KeyboardState = std::array<std::uint8_t, 256>;

/// One reading of a game controller.
struct JoystickState {
  int x = 0, y = 0, rx = 0, ry = 0;        ///< -10000 .. 10000 within the range that was set
  std::array<std::uint8_t, 32> buttons{};  ///< not zero: down
};

/// `SetCooperativeLevel`: read in the background, shared with other programs.
inline constexpr int kBackgroundNonExclusive = 10;

/// The system keyboard, read on demand. Destroying it releases it.
class KeyboardDevice {
 public:
  virtual ~KeyboardDevice() = default;
  virtual void SetCommonDataFormat(int format) = 0;  ///< 1: keyboard
  virtual void SetCooperativeLevel(int flags) = 0;
  virtual void Acquire() = 0;
  virtual KeyboardState GetDeviceStateKeyboard() = 0;
};

/// Axis properties of a controller; both are in hundredths of a percent of the travel.
enum class AxisProperty { kDeadZone, kSaturation };

/// Objects that `SetAxisProperty` addresses.
inline constexpr int kObjectX = 0;
inline constexpr int kObjectY = 4;

/// A game controller. Destroying it releases it.
class ControllerDevice {
 public:
  virtual ~ControllerDevice() = default;
  virtual void SetCommonDataFormat(int format) = 0;  ///< 3: joystick with 32 buttons
  virtual void SetCooperativeLevel(int flags) = 0;
  /// From now on `EventReceiver::DirectXEvent8_DXCallback(handle)` runs, at
  /// yields, after the state has changed.
  virtual void SetEventNotification(int handle) = 0;
  virtual void SetRange(int low, int high) = 0;  ///< whole device
  virtual void SetAxisProperty(AxisProperty property, int object, int value) = 0;
  virtual void Acquire() = 0;
  virtual void Unacquire() = 0;
  virtual void Poll() = 0;  ///< never fails: a vanished controller reads neutral
  /// Throws `InputLost` where the device must be acquired again.
  virtual JoystickState GetDeviceStateJoystick() = 0;
  virtual int buttonCount() = 0;  ///< of `GetCapabilities`, 0 .. 32
};

}  // namespace vorn
