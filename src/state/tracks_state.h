/// What `tracks/` owns: the race that was asked for and the segment being driven.
#pragma once

namespace vorn {

struct TracksState {
  double lapsToRun = 0;     ///< as typed; may be a fraction or negative
  int segment = 0;          ///< counts from 1; 0 on pit road
  double warnDistance = 1;  ///< length over which the cue rises
  double warnScale = 0;     ///< hundredths of a decibel a percent of the way still to go
  int warnPan = 0;          ///< hundredths of a decibel, negative: left
};

}  // namespace vorn
