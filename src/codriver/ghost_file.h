/// The file that keeps the ghosts of a track, and that a player sends to a friend. Pure.
///
/// "VORNGHOST", a byte for the version, the number of the track, then the laps: their kind, their time and
/// their places as differences from one to the next, each number as few bytes as it needs; at the end a
/// checksum of all that.
#pragma once

#include <optional>
#include <string>

#include "codriver/ghost.h"

namespace vorn {

inline constexpr const char* kGhostSuffix = ".ghost";

/// The name under which the ghosts of track 1 .. 10 are kept.
std::string ghostFileName(int track);

struct GhostFile {
  int track = 1;  ///< 1 .. 10
  Ghosts ghosts;
};

/// A lap of more places than this is not worth keeping: its file would be longer than a folder gives back.
inline constexpr std::size_t kMostGhostPlaces = 3000;

/// Times are kept to a thousandth of a tick, distances and places across the road to a tenth of a unit.
std::string encodeGhosts(const GhostFile& file);

/// A file of everything that stands before the checksum.
std::string withChecksum(const std::string& content);

/// What is wrong with a file.
enum class GhostFault { kNone, kDamaged, kOtherVersion };

struct GhostReading {
  GhostFault fault = GhostFault::kNone;
  GhostFile file;  ///< without ghosts where there is a fault
};

GhostReading decodeGhosts(const std::string& bytes);

}  // namespace vorn
