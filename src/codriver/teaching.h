/// What lessons and previews share: a second game that is driven on a real track, from any place of its first
/// straight, and watched tick by tick.
#pragma once

#include <functional>

#include "codriver/guest.h"
#include "tracks/track.h"

namespace vorn {

/// A guest's platform that tells of each tick, and whose keys and controller someone else may work.
class TaughtPlatform : public GuestPlatform {
 public:
  TaughtPlatform(Platform& inner, Seat& seat) : GuestPlatform(inner, seat) {}

  std::function<void(const TickReport&)> onTick;     ///< after each tick; does not wait
  std::function<void(KeyboardState&)> onKeys;        ///< may change what the keyboard says
  std::function<void(JoystickState&)> onController;  ///< may change what the controller says

  void carTicked(const TickReport& report) override;
  std::unique_ptr<KeyboardDevice> createKeyboardDevice() override;
  std::unique_ptr<ControllerDevice> createControllerDevice(const std::string& identifier) override;
};

/// Where a car is put.
struct CarPlace {
  double lapPosition = 0;  ///< in the first segment
  double lateralPosition = 50;
  double speed = 0;
  int gear = 1;
};

/// Opens the sound of a guest's game and loads what a race needs. Throws `PlatformError`.
void openSounds(GameState& g);

/// Drives one lap of `road`, which is track 1 .. 10 or what has been made of it, from `place` on, in motion
/// and without a start. Returns whether it was completed: not where `escapePressed` became 1, by the player
/// or by whoever watches the ticks. All is silent and `escapePressed` 0 afterwards. Waits.
bool driveLap(GameState& g, int track, const Track& road, const CarPlace& place);

}  // namespace vorn
