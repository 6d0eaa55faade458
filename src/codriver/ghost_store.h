/// The player's ghosts in his folder: his own best laps, and the lap of a friend for each track. Reads and
/// writes files; waits for the disk alone.
#pragma once

#include <string>

#include "codriver/ghost_file.h"
#include "platform/files.h"

namespace vorn {

/// What is kept of a track, and what there is to be said of it.
struct KeptGhosts {
  Ghosts ghosts;
  std::string word;  ///< why there are none; empty: nothing is wrong
};

/// The name under which a friend's laps on track 1 .. 10 are kept.
std::string friendsFileName(int track);

/// The player's own best laps on track 1 .. 10. A damaged file, or one of another version, counts as none.
KeptGhosts keptGhosts(Files& files, int track);
/// A friend's laps.
KeptGhosts friendsGhosts(Files& files, int track);

/// Keeps those of `laps` that are better than what is kept, which another game may have changed meanwhile.
/// Returns what there is to be said: empty where all is well.
std::string keepGhosts(Files& files, int track, const Ghosts& laps);

/// What has become of a file that was sent.
struct GhostImport {
  bool isDone;
  std::string word;
};
/// A file that was sent, its bytes: taken in as the friend's laps of its track, in place of those before.
GhostImport importGhosts(Files& files, const std::string& bytes);

}  // namespace vorn
