/// Game controllers through SDL, read as X, Y, Rx, Ry and 32 buttons, also while
/// the window is not in front. Nothing here waits; all of it belongs to the
/// thread that pumps SDL's events.
///
/// Which axis is which:
/// - a gamepad that SDL knows: left stick X and Y, right stick Rx and Ry;
/// - a steering wheel with separate pedals: the wheel is X, the pedals together
///   are Y, gas forward (negative) and brake back, as the game's one gas axis wants;
/// - anything else, joysticks and wheels with one pedal axis among them: the
///   first two axes are X and Y, and the two that follow the throttle (or, of
///   four axes, the last two) are Rx and Ry.
#pragma once

#include <SDL_joystick.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/common/axis_law.h"
#include "platform/platform.h"

namespace vorn {

/// SDL's controllers for as long as it lives.
class Controllers {
 public:
  /// Where SDL refuses there are no controllers; the reason goes to standard error.
  Controllers();
  ~Controllers();
  Controllers(const Controllers&) = delete;
  Controllers& operator=(const Controllers&) = delete;

  /// Identifiers of those attached now, the first attached first.
  std::vector<std::string> attached() const;
  /// Throws `PlatformError` where no such controller is attached. At most as
  /// long-lived as this.
  std::unique_ptr<ControllerDevice> open(const std::string& identifier);
  /// Tells `receiver` (null: nobody) of the controllers whose state has changed.
  void notify(EventReceiver* receiver);

 private:
  class Device;

  std::vector<Device*> devices_;
};

}  // namespace vorn
