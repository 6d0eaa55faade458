/// The controller test: what moves, in words, and what the game takes it for. Pure
/// but for the test itself.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "codriver/menu.h"
#include "platform/input_devices.h"
#include "state/input_state.h"

namespace vorn {

class ControllerWatch {
 public:
  /// `rest`: how the controller stands when the test begins.
  explicit ControllerWatch(const JoystickState& rest) : last_(rest) {}

  /// What has moved since the last reading, a sentence each with a blank before and behind it. `maps`: what
  /// drives what.
  std::vector<std::string> after(const JoystickState& reading, const InputState& maps);

 private:
  JoystickState last_;  ///< axes as they stood when they were told of
  bool hasGas_ = false, hasBrake_ = false, isSharingTold_ = false;
};

/// Tells of every move until the player leaves with Escape. Waits.
void testController(Cabin& cabin);

}  // namespace vorn
