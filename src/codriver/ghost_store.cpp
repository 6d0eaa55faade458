#include "codriver/ghost_store.h"

#include "platform/errors.h"
#include "records/records.h"
#include "state/track_names.h"

namespace vorn {
namespace {

const char* nameOf(int track) {
  return kTrackNames.at(static_cast<std::size_t>(track - 1)).spoken;
}

/// Why a file gives no ghosts.
std::string complaintOf(GhostFault fault) {
  switch (fault) {
    case GhostFault::kDamaged:
      return " is damaged. ";
    case GhostFault::kOtherVersion:
      return " is of another version of the game. ";
    case GhostFault::kNone:
      break;
  }
  return "";
}

KeptGhosts read(Files& files, const std::string& name, int track) {
  if (!files.find(name)) return {};
  GhostReading reading{.fault = GhostFault::kDamaged, .file = {}};
  carryOn([&] { reading = decodeGhosts(files.read(name)); });
  if (reading.fault == GhostFault::kNone && reading.file.track != track) reading.fault = GhostFault::kDamaged;
  if (reading.fault == GhostFault::kNone) return {std::move(reading.file.ghosts), ""};
  return {{}, std::string(" The ghost of the ") + nameOf(track) + complaintOf(reading.fault)};
}

}  // namespace

std::string friendsFileName(int track) {
  return recordPrefix(track) + ".friend" + kGhostSuffix;
}

KeptGhosts keptGhosts(Files& files, int track) {
  return read(files, ghostFileName(track), track);
}

KeptGhosts friendsGhosts(Files& files, int track) {
  return read(files, friendsFileName(track), track);
}

std::string keepGhosts(Files& files, int track, const Ghosts& laps) {
  const auto lock = files.lock();
  Ghosts kept = keptGhosts(files, track).ghosts;
  bool isBetter = false;
  for (const GhostLap& lap : laps) {
    if (lap.places.size() <= kMostGhostPlaces) isBetter |= keepBetter(kept, lap);
  }
  if (!isBetter) return "";
  const bool isKept =
      carryOn([&] { files.write(ghostFileName(track), encodeGhosts({.track = track, .ghosts = kept})); });
  return isKept ? "" : " The ghost could not be kept. ";
}

GhostImport importGhosts(Files& files, const std::string& bytes) {
  const GhostReading reading = decodeGhosts(bytes);
  if (reading.fault != GhostFault::kNone) return {false, " The file" + complaintOf(reading.fault)};
  const int track = reading.file.track;
  const std::string laps = std::string("laps on the ") + nameOf(track);
  const bool isKept = carryOn([&] { files.write(friendsFileName(track), encodeGhosts(reading.file)); });
  return {isKept, isKept ? " Taken in: " + laps + ". " : " They could not be kept: " + laps + ". "};
}

}  // namespace vorn
