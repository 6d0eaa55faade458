/// The driver with a wheel in a script: turns ticks into statements.
#pragma once

#include <string>

#include "demo/wheel_driver.h"

namespace vorn {

class WheelScript {
 public:
  explicit WheelScript(const Track& track) : driver_(track) {}

  /// What to do after this tick, one statement a line.
  std::string after(const TickReport& tick);

 private:
  WheelDriver driver_;
  WheelControls held_;
};

}  // namespace vorn
