/// A lap of a track, heard through the game's own mixer in virtual time: whether
/// each cue stands out on its side, over everything else that sounds in the race,
/// and whether the walls tell where across the track the car is.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/headless/render.h"
#include "tracks/track.h"

namespace vorn {

/// What is heard of a cue over the second half of its segment, when it has to tell
/// the driver what comes.
struct CueHeard {
  std::string file;
  double nearShare;   ///< of the ear on its side, 1: as loud as the game has asked for
  double farShare;    ///< of the other ear
  double prominence;  ///< dB above the rest, in the ear on its side
  double lastShare;   ///< as `nearShare`, in the last moments of the segment
};

/// What is heard of the walls over all the time that the car is at about one place across the track.
struct WallsHeard {
  int lateralPosition;  ///< to the nearest ten
  int ticks;
  double difference;  ///< dB of the right wall over the left one, each in its ear
};

struct TestDrive {
  const Track* track;
  double seconds;                 ///< from the first tick to the last
  std::vector<CueHeard> cues;     ///< a segment each
  std::vector<WallsHeard> walls;  ///< from the left to the right
  double peak;                    ///< the highest sample, full scale is 1
  double limited;                 ///< share of its moments of 10 ms in which the limiter holds a peak
  int longestPlateau;             ///< samples in a row at the height of the highest
};

/// Which lap.
struct Lap {
  int track;       ///< 1 .. 10
  int engine = 1;  ///< engine sound, 1 .. 6
};

/// Drives a lap with the sounds of `folder`, where nothing is written. All that is heard, from the title to
/// the farewell, also goes to `recording` (not owned; null: nowhere). Takes a few seconds. Throws
/// `std::runtime_error` where the lap is not finished.
TestDrive driveLap(const Lap& lap, const std::string& folder, RenderSink* recording);

/// Why a driver could not rely on what is heard; empty where all is well.
std::vector<std::string> faultsOf(const TestDrive& drive);

/// Drives all tracks with each of `engines`; what is heard goes to `recordings` (made where it is
/// missing), a WAV file a lap. Says on standard output how each was; returns whether all is well.
bool driveAllTracks(const std::string& folder, const std::string& recordings, std::span<const int> engines);

}  // namespace vorn
