/// What a driver is ticked and warned of. Pure: each rule follows the ticks of a race
/// and tells what is new.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "codriver/tones.h"
#include "platform/platform.h"
#include "state/race_state.h"

namespace vorn {

/// True once each time that something becomes so.
class Edge {
 public:
  bool rises(bool isSo) { return !std::exchange(wasSo_, isSo) && isSo; }

 private:
  bool wasSo_ = false;
};

/// Whether the gear has no more to give and there is a higher one.
bool isGearUsedUp(const TickReport& tick);

/// The wall contacts that crash a car in any case where it is not in the marbles.
inline constexpr int kContactsBorne = 10;

/// What is to be said after a tick about walls and fuel.
class Warnings {
 public:
  /// Each sentence once, a blank before and behind it. `lapsToRun` of the race, `lapLength` of its track.
  std::vector<std::string> after(const TickReport& tick, double lapsToRun, double lapUnits,
                                 double unitsIntoLap);

 private:
  int contacts_ = 0;  ///< that have been told of
  double fuelBefore_ = kFullTank;
  double filledAt_ = 0;  ///< laps driven when the tank was full last
  bool isLowTold_ = false;
  bool isEmptyTold_ = false;
};

/// What pit road has to sound: whether it can be taken, and how fast it is driven.
enum class PitSignal { kNone, kOpens, kCloses, kTooFast, kSlowEnough };

class PitWatch {
 public:
  PitSignal after(const TickReport& tick);

 private:
  bool isOpen_ = false;
  bool isTooFast_ = false;
};

/// How a signal sounds; nothing for none.
std::vector<Beep> pitFigure(PitSignal signal);

}  // namespace vorn
