/// The slider: where the car will soon be, as a tone. Pure.
#pragma once

#include <optional>

#include "codriver/tones.h"
#include "platform/platform.h"
#include "tracks/track.h"

namespace vorn {

/// How far ahead the slider looks, car ticks: 0.7 s.
inline constexpr int kSliderTicks = 7;

/// What the driver's hands do at the end of a tick.
struct Hands {
  int steering = 0;     ///< the reading, -10000 .. 10000; 0 where nothing is steered
  bool byKeys = false;  ///< a key that is held goes on building up its lock
};

/// Where across the road the car will be in 0.7 s if nothing changes, 0 .. 100.
double placeAhead(const Track& track, const TickReport& tick, const Hands& hands);

/// How a place is heard: nothing in the safe middle, else a tone on the side of the danger, the louder and
/// higher the nearer to the wall. Before a jump the safe middle is the ramp's.
std::optional<Tone> sliderTone(double place, bool isBeforeJump);
/// The place that a slider tone tells of.
double placeOfTone(const Tone& tone, bool isBeforeJump);

/// Whether the next thing to come is a jump, less than `kRunUp` units ahead.
bool isBeforeJump(const Track& track, const TickReport& tick);

}  // namespace vorn
