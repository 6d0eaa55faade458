/// Keyboard and controller of a headless session: what the script has moved, as
/// the game reads it. No call waits.
#pragma once

#include "platform/headless/world.h"

namespace vorn {

class VirtualKeyboard : public KeyboardDevice {
 public:
  explicit VirtualKeyboard(World& world);
  ~VirtualKeyboard() override;
  void SetCommonDataFormat(int format) override;
  void SetCooperativeLevel(int flags) override;
  void Acquire() override;
  /// Throws `PlatformError` where it has not been acquired.
  KeyboardState GetDeviceStateKeyboard() override;

 private:
  World& world_;
  bool isAcquired_ = false;
};

class VirtualController : public ControllerDevice {
 public:
  explicit VirtualController(World& world);
  ~VirtualController() override;
  void SetCommonDataFormat(int format) override;
  void SetCooperativeLevel(int flags) override;
  void SetEventNotification(int handle) override;
  void SetRange(int low, int high) override;
  void SetAxisProperty(AxisProperty property, int object, int value) override;
  void Acquire() override;
  void Unacquire() override;
  void Poll() override {}
  JoystickState GetDeviceStateJoystick() override;
  int buttonCount() override;

 private:
  World& world_;
  bool isAcquired_ = false;
};

}  // namespace vorn
