/// The driver of the demonstration: listens to what the game says, watches the
/// car, and works keys, wheel and pedals as a player would. Pure logic; knows the
/// tracks, but no game state and no device.
#pragma once

#include <cstdint>
#include <deque>
#include <string>

#include "demo/wheel_driver.h"
#include "platform/common/key_codes.h"
#include "platform/platform.h"

namespace vorn {

/// What the driver's hands and feet do at the moment.
struct DemoControls {
  JoystickState wheel;
  const Key* keyDown = nullptr;  ///< the key held; null: none
};

class DemoDriver {
 public:
  /// Will race on track 1 .. 10.
  explicit DemoDriver(int track);

  /// Something has been said.
  void hear(const std::string& text);
  /// The car has done a tick.
  void watch(const TickReport& tick);
  /// A moment of time `now` (ms) passes; `isQuiet`: nothing is being said.
  const DemoControls& act(std::uint32_t now, bool isQuiet);

 private:
  /// A key to tap once the game has fallen silent.
  void tapWhenQuiet(std::string_view key) { taps_.push_back(keyByName(key)); }
  void workKeys(std::uint32_t now, bool isQuiet);
  void startCar(std::uint32_t now);
  void holdButton(int button, std::uint32_t untilMs);

  const int track_;
  WheelDriver wheelDriver_;
  DemoControls controls_;
  std::deque<const Key*> taps_;
  std::uint32_t keyUntil_ = 0;
  std::uint32_t nextTapAt_ = 0;
  std::uint32_t now_ = 0;

  bool isStartingEngine_ = false;
  bool isCountingDown_ = false;
  bool isDriving_ = false;
  std::uint32_t countdownStart_ = 0;
  std::uint32_t buttonUntil_ = 0;
  int heldButton_ = -1;  ///< until `buttonUntil_`; negative: none
};

}  // namespace vorn
