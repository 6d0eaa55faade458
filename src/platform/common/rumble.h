/// What the car lets the driver's hands feel. Pure.
///
/// It is told from what reaches the platform anyhow, so that the game knows nothing of it: marbles and
/// scraping from the tick reports, which are there for whoever watches the race from outside; a crash,
/// in which no tick passes, from its sound. Sounds alone would not do: the marbles' one
/// always plays, and becomes louder or nearly silent.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "platform/platform.h"

namespace vorn {

struct Rumble {
  double heavy, light;  ///< strength of the two motors, 0 .. 1
  int ms;
};

/// How long ago the player has moved a control of a controller that is felt: one that lies idle on the
/// table beside the keyboard would only rattle.
inline constexpr std::chrono::seconds kStillInHand{10};

class RumbleSense {
 public:
  /// What is felt in the tick that `report` ends.
  std::optional<Rumble> tick(const TickReport& report) {
    const bool isMoving = report.speed > 0;
    const bool scrapes = report.wallTicks > wallTicks_;
    const bool isOnMarbles = report.marblesTicks > marblesTicks_;
    wallTicks_ = report.wallTicks;
    marblesTicks_ = report.marblesTicks;
    if (isMoving && scrapes) return kScrape;
    if (isMoving && isOnMarbles) return kMarbles;
    return std::nullopt;
  }
  /// What is felt when the sound of this file is about to be played.
  static std::optional<Rumble> sound(const std::string& fileName) {
    if (fileName == "vorn15.wav") return kCrash;
    return std::nullopt;
  }

  // A tick lasts 99 milliseconds: what goes on is felt without a gap.
  static constexpr Rumble kMarbles{0, 0.4, 150};
  static constexpr Rumble kScrape{0.6, 0.6, 150};
  static constexpr Rumble kCrash{1, 1, 900};

 private:
  int wallTicks_ = 0, marblesTicks_ = 0;
};

}  // namespace vorn
