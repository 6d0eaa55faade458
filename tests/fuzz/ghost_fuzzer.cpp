// A file of ghosts, with a good checksum and with whatever checksum it has: where it is read, each lap can be
// raced and timed, and is kept as it was read.

#include <cmath>

#include "codriver/ghost_file.h"
#include "codriver/lap_times.h"
#include "fuzz/checks.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

void race(const GhostLap& ghost, const Track& track) {
  for (const double share : {-0.5, 0.0, 0.3, 1.0, 2.0}) {
    const auto place = ghostAt(ghost, ghost.ticks * share);
    require(place.has_value(), "a lap has places");
    require(std::isfinite(place->distance) && std::isfinite(place->lateral), "a place is somewhere");
    require(std::isfinite(ghostTicksAt(ghost, lapLength(track) * share)), "a place is passed at some time");
    const GhostSound sound = ghostSound(place->distance, place->lateral);
    require(sound.volume <= 0 && std::abs(sound.pan) <= 10000, "a sound is within what a buffer takes");
  }
  for (const double ticks : sectorTicks(ghost, track))
    require(std::isfinite(ticks), "a sector takes some time");
  require(!lapSentence(ghost, &ghost).empty(), "a lap can be told");
}

void read(const std::string& bytes) {
  const GhostReading reading = decodeGhosts(bytes);
  if (reading.fault != GhostFault::kNone) {
    require(reading.file.ghosts.empty(), "of a faulty file nothing is taken");
    return;
  }
  for (const GhostLap& ghost : reading.file.ghosts) {
    race(ghost, *allTracks()[static_cast<std::size_t>(reading.file.track - 1)]);
  }
  const GhostReading again = decodeGhosts(encodeGhosts(reading.file));
  require(again.fault == GhostFault::kNone && again.file.ghosts == reading.file.ghosts,
          "it is kept as it was read");
}

}  // namespace
}  // namespace vorn

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string content = vorn::bytesOf(data, size);
  vorn::read(content);
  vorn::read(vorn::withChecksum(content));
  return 0;
}
