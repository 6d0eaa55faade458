/// The millisecond clock of a race, and waiting for its ticks: exact to about a
/// tenth of a millisecond, with the processor at rest meanwhile.
#pragma once

#include <chrono>
#include <cstdint>

namespace vorn {

class TickClock {
 public:
  /// Milliseconds of the system's steady clock; wraps from 2^31 - 1 to -2^31.
  std::int32_t now() const;
  /// Waits until the clock shows `ms` more than now, or until an event of the
  /// desktop is there to be delivered (in the last two milliseconds only the end
  /// is waited for). SDL's video must be up, on this thread.
  void waitForEvent(int ms) const;
  /// Lets `ms` pass.
  static void sleep(int ms);
};

}  // namespace vorn
