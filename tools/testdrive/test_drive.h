/// A lap of a track, heard through the game's own mixer in virtual time: whether
/// each cue stands out on its side, over everything else that sounds in the race,
/// and whether the walls tell where across the track the car is.
#pragma once

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
  int longestPlateau;             ///< samples in a row at the height of the highest
};

/// Drives a lap of track 1 .. 10 with the sounds of `folder`, where nothing is
/// written. All that is heard, from the title to the farewell, also goes to
/// `recording` (not owned; null: nowhere). Takes a few seconds. Throws
/// `std::runtime_error` where the lap is not finished.
TestDrive driveLap(int track, const std::string& folder, RenderSink* recording);

/// Why a driver could not rely on what is heard; empty where all is well.
std::vector<std::string> faultsOf(const TestDrive& drive);

/// Drives all tracks; what is heard goes to `recordings` (made where it is
/// missing), a WAV file a track. Says on standard output how each was; returns whether all is well.
bool driveAllTracks(const std::string& folder, const std::string& recordings);

}  // namespace vorn
