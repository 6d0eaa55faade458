/// Game controllers through SDL, read as X, Y, Rx, Ry and 32 buttons, also while
/// the window is not in front. Nothing here waits; all of it belongs to the
/// thread that pumps SDL's events.
///
/// What each axis and button is taken for `platform/common/controller_layout.h` tells.
/// Pedals with a plug of their own are no controller: they join the first wheel.
#pragma once

#include <SDL_joystick.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/common/rumble.h"
#include "platform/desktop/sdl_controller.h"
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

  /// Identifiers of those attached now that a car can be driven with, the first attached first.
  std::vector<std::string> attached() const;
  /// Of all that are attached now, the first attached first.
  std::vector<ControllerFacts> facts() const;
  /// Throws `PlatformError` where no such controller is attached. At most as
  /// long-lived as this.
  std::unique_ptr<ControllerDevice> open(const std::string& identifier);
  /// Tells `receiver` (null: nobody) of the controllers whose state has changed.
  void notify(EventReceiver* receiver);
  /// Lets it be felt by a player who has lately moved a control, where the controller can.
  void rumble(const Rumble& rumble);
  /// What the player should hear since the last call: controllers that have come and gone.
  std::vector<std::string> takeNews();

 private:
  class Device;
  using Instances = std::vector<SDL_JoystickID>;

  static Instances instances();
  void lookAround();
  void lookAfterPedals();
  void findPedals();

  std::vector<Device*> devices_;
  std::unique_ptr<SdlController> pedals_;  ///< null: none
  Instances known_;                        ///< that have been looked at
  std::vector<std::string> news_;
};

}  // namespace vorn
