/// When the pit box voice says what, in seconds of its recording. The tape runs
/// at a rate that follows the car, which makes it a map of the lane: a second
/// is about 500 units of it, and a driver who brakes on hearing "2" at 45 to
/// 60 miles an hour stops inside the box, 2500 to 3500.
#pragma once

#include <array>

namespace vorn::sounds {

struct PitBoxNumber {
  const char* word;
  double seconds;
};

constexpr double kPitBoxCall = 0.35;
constexpr std::array kPitBoxNumbers{PitBoxNumber{"five", 2.05}, PitBoxNumber{"four", 2.95},
                                    PitBoxNumber{"three", 3.85}, PitBoxNumber{"two", 4.75},
                                    PitBoxNumber{"one", 5.65}};
constexpr double kPitBoxBlip = 0.02;    ///< length of the tick in front of each number
constexpr double kPitBoxMissing = 6.2;  ///< a tone falls from here
constexpr double kPitBoxPassed = 7.0;   ///< a buzz: past the box

}  // namespace vorn::sounds
