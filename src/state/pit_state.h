/// What `pit/` owns.
#pragma once

namespace vorn {

struct PitState {
  int pitEntryMissed = 0;  ///< 1: the last request came too late and was refused
  int pit = 0;             ///< 1 while the car is on pit road
};

}  // namespace vorn
