/// The walls and what is heard of them: the two wall sounds, light poles, and the
/// contact that scrapes, slows and at last crashes the car.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Across the track: the left wall, the right wall.
inline constexpr double kLeftWall = 0;
inline constexpr double kRightWall = 100;
inline constexpr double kMiddle = 50;

/// Pans and volumes the two wall sounds by where the car is. Does not wait.
void SetWind(GameState& g);

/// One light pole, on alternating sides; silent below 80 mph. Yields twice when it sounds.
void playsignpoll(GameState& g);

/// One contact with a wall, or, with `forceCrash`, a crash. A crash runs the whole
/// restart and returns with the car in first gear in the middle of the track, or
/// with `escapePressed` = 1.
void c4c(GameState& g);

/// Stops the scrape of a wall that the car has left.
void stopWallScrape(GameState& g);

}  // namespace vorn
