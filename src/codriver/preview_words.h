/// What a track is like, in words: each segment as it is driven by the built-in driver. Pure.
#pragma once

#include <string>
#include <vector>

#include "tracks/track.h"

namespace vorn {

/// How a segment is driven.
struct SegmentPace {
  double seconds = 0;  ///< that it takes, race time
  double slowest = 0;  ///< mph
  int gear = 1;        ///< at its slowest
};

/// A flying lap of the built-in driver on paper, who never goes beyond `topSpeed` mph; a row a segment.
std::vector<SegmentPace> paceOf(const Track& track, double topSpeed);

/// How hard a segment pushes in a tick at 120 mph in the middle of the road, lateral units.
double sharpnessOf(const Segment& segment);

/// "long straight, 13 seconds", "left, tight, second gear"; with a blank before it and a stop behind.
std::string segmentWords(const Segment& segment, const SegmentPace& pace);

}  // namespace vorn
