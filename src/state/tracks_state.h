/// What `tracks/` owns: the race that was asked for and the segment being driven.
#pragma once

namespace vorn {

struct TracksState {
  double lapsToRun = 0;  ///< as typed; may be a fraction or negative
  int segment = 0;       ///< counts from 1; 0 on pit road
};

}  // namespace vorn
