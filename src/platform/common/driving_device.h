/// A game controller as the game sets it up and is told of it, whatever reads how its controls stand.
/// Nothing here waits.
#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "platform/common/axis_law.h"
#include "platform/common/controller_reader.h"
#include "platform/platform.h"

namespace vorn {

class DrivingDevice : public ControllerDevice {
 public:
  DrivingDevice() = default;
  DrivingDevice(const DrivingDevice&) = delete;
  DrivingDevice& operator=(const DrivingDevice&) = delete;

  void SetCommonDataFormat(int format) override;
  void SetCooperativeLevel(int) override {}  // always shared, as long as the system lets it be read
  void SetEventNotification(int handle) override { notify_ = handle; }
  void SetRange(int low, int high) override;
  void SetAxisProperty(AxisProperty property, int object, int value) override;
  void Acquire() override;
  void Unacquire() override { isAcquired_ = false; }
  JoystickState GetDeviceStateJoystick() override;

  virtual bool isAttached() const = 0;
  /// Tells `receiver` (null: nobody) where the state has changed.
  void notify(EventReceiver* receiver);
  /// Whether the player has lately moved a control.
  bool isInHand() const;
  /// Tells `news` of its being unplugged, and goes on with one of its kind where there is one.
  void lookAfterPlug(std::vector<std::string>& news);

 private:
  using Clock = std::chrono::steady_clock;

  /// As the controls stand; at rest where it has been unplugged.
  virtual ControllerReading read() = 0;
  /// Takes one of its kind in its place. Returns whether there is one.
  virtual bool comeBack() = 0;
  JoystickState state();

  std::array<AxisLaw, 4> laws_;  ///< of X, Y, Rx and Ry
  std::optional<int> notify_;
  bool isAcquired_ = false;
  bool isGone_ = false;                      ///< and the player knows
  JoystickState told_;                       ///< what the game has been told of
  std::optional<Clock::time_point> usedAt_;  ///< nothing before its first use
};

}  // namespace vorn
