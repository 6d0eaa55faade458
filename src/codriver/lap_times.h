/// Laps by the clock: follows the ticks of a race from outside, times laps and sectors, and puts them into
/// words. Pure.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "codriver/ghost.h"
#include "platform/platform.h"
#include "tracks/track.h"

namespace vorn {

/// A lap is told in three sectors.
inline constexpr std::size_t kSectors = 3;

/// Where each sector ends, units of the lap: at the joint that is nearest to a third, two thirds and the
/// whole.
std::array<double, kSectors> sectorEnds(const Track& track);
/// What each sector of a lap took, race ticks.
std::array<double, kSectors> sectorTicks(const GhostLap& lap, const Track& track);

/// What a tick was in its lap.
struct LapStep {
  double ticks = 0;             ///< race ticks since the lap began
  double distance = 0;          ///< units of the lap behind the car
  bool endsSegment = false;     ///< it has crossed a joint
  std::optional<GhostLap> lap;  ///< the lap that it has ended
};

/// Follows one race. A lap's time is counted as the game counts a race's, so that the laps of a race add up
/// to its time.
class LapWatch {
 public:
  explicit LapWatch(const Track& track) : track_(track) {}

  /// Takes the next tick of the race, driven with keys or with a wheel. A tick on pit road ends nothing and
  /// has the distance of the tick before it.
  LapStep watch(const TickReport& tick, bool isByKeys);

 private:
  const Track& track_;
  double lapBegan_ = 0;  ///< race ticks
  GhostLap lap_;         ///< the one being driven
};

/// The laps of a session on one track with one device.
struct LapBook {
  std::optional<GhostLap> last;
  std::optional<GhostLap> best;     ///< of this session
  std::optional<GhostLap> measure;  ///< what the last one is compared with: the best of its kind before it

  /// `bestUntilThen`: of the lap's kind; null: there was none.
  void enter(const GhostLap& lap, const GhostLap* bestUntilThen);
};

/// One decimal in words: "49 point 2".
std::string tenthsText(double number);
/// "49 point 2 seconds", "1 minute 3 point 0 seconds".
std::string lapTimeText(double ticks);

/// What is said at the end of a lap, against the best of its kind until then: "Lap 49 point 2 seconds, 0
/// point 3 behind. "
std::string lapSentence(const GhostLap& lap, const GhostLap* best);
inline constexpr const char* kNoLapYet = " No lap yet. ";
/// The answer to a question for the times. `everBest`: what is kept of the track; may be empty.
std::string lapReport(const LapBook& book, const Ghosts& everBest, const Track& track);

}  // namespace vorn
