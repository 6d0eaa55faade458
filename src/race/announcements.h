/// What the driver asks for and what is told by itself: short texts that cut off
/// whatever is being said. None waits.
#pragma once

#include <string>

#include "state/game_state.h"

namespace vorn {

// On request; each kind is answered at most once every 750 ms.
void saycspot(GameState& g);  ///< where the car is across the track, 0..100
void SayGear(GameState& g);
void SaySpeed(GameState& g);    ///< mph
void SayLap(GameState& g);      ///< the lap being driven
void SayGTV(GameState& g);      ///< gallons of fuel, one decimal
void SayCurTime(GameState& g);  ///< elapsed race time in words

/// The gear after a shift, unless the option is off.
void saygear2(GameState& g);

/// Builds the sentence of the finished time and logs it. Says nothing.
void SayRaceTime(GameState& g);

/// The elapsed time of `raceTicks` in words, as `SayCurTime` says it.
std::string elapsedTimeText(double raceTicks);

}  // namespace vorn
