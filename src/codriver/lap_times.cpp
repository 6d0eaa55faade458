#include "codriver/lap_times.h"

#include <algorithm>
#include <cmath>

#include "race/race_clock.h"
#include "text/numbers.h"

namespace vorn {
namespace {

double startOf(const Track& track, int segment) {
  double start = 0;
  for (int i = 0; i + 1 < segment; ++i) start += track.segments[static_cast<std::size_t>(i)].length;
  return start;
}

/// The race ticks at which a car that is past `end` now was there, as the game has it at the finish.
double ticksAtTheLine(const TickReport& tick, double end) {
  RaceState race;
  race.raceTicks = tick.raceTicks;
  race.lapPosition = tick.lapPosition;
  settimes(race, end);
  return race.raceTicks;
}

bool isBetter(const GhostLap& lap, const GhostLap* other) {
  return other == nullptr || lap.ticks < other->ticks;
}

/// The quickest one by this device, whatever it began with.
const GhostLap* quickest(const Ghosts& ghosts, bool isByKeys) {
  const GhostLap* best = nullptr;
  for (const GhostLap& lap : ghosts) {
    if (lap.kind.isByKeys == isByKeys && isBetter(lap, best)) best = &lap;
  }
  return best;
}

std::string sectorSentences(const GhostLap& lap, const GhostLap& other, const Track& track) {
  const auto own = sectorTicks(lap, track);
  const auto their = sectorTicks(other, track);
  std::string text;
  for (std::size_t i = 0; i < kSectors; ++i) {
    text += "Sector " + std::to_string(i + 1) + ", " + gapText((own[i] - their[i]) / kTicksPerSecond) + ". ";
  }
  return text;
}

}  // namespace

std::array<double, kSectors> sectorEnds(const Track& track) {
  const double length = lapLength(track);
  std::array<double, kSectors> ends{};
  double joint = 0;
  for (const Segment& segment : track.segments) {
    joint += segment.length;
    for (std::size_t i = 0; i < kSectors; ++i) {
      const double ideal = length * static_cast<double>(i + 1) / kSectors;
      if (std::fabs(joint - ideal) < std::fabs(ends[i] - ideal)) ends[i] = joint;
    }
  }
  return ends;
}

std::array<double, kSectors> sectorTicks(const GhostLap& lap, const Track& track) {
  const auto ends = sectorEnds(track);
  std::array<double, kSectors> ticks{};
  double began = 0;
  for (std::size_t i = 0; i < kSectors; ++i) {
    const double ended = i + 1 == kSectors ? lap.ticks : ghostTicksAt(lap, ends[i]);
    ticks[i] = ended - began;
    began = ended;
  }
  return ticks;
}

LapStep LapWatch::watch(const TickReport& tick, bool isByKeys) {
  LapStep step;
  step.ticks = tick.raceTicks - lapBegan_;
  lap_.kind.isByKeys = isByKeys;
  const bool isOnTrack = tick.segment > 0;
  if (isOnTrack) {
    step.distance = startOf(track_, tick.segment) + tick.lapPosition;
    const double end = track_.segments[static_cast<std::size_t>(tick.segment - 1)].length;
    step.endsSegment = tick.lapPosition >= end;
  } else if (!lap_.places.empty()) {
    step.distance = lap_.places.back().distance;
  }
  lap_.places.push_back({step.ticks, step.distance, tick.lateralPosition});
  if (!step.endsSegment || tick.segment != static_cast<int>(track_.segments.size())) return step;
  const double ended = ticksAtTheLine(tick, track_.segments.back().length);
  lap_.ticks = ended - lapBegan_;
  step.lap = lap_;
  lap_ = {.kind = {.isByKeys = isByKeys, .isFlying = true}, .ticks = 0, .places = {}};
  lapBegan_ = ended;
  return step;
}

void LapBook::enter(const GhostLap& lap, const GhostLap* bestUntilThen) {
  last = lap;
  measure = bestUntilThen != nullptr ? std::optional(*bestUntilThen) : std::nullopt;
  if (isBetter(lap, best ? &*best : nullptr)) best = lap;
}

std::string tenthsText(double number) {
  const double tenths = roundEven(number * 10);
  return numberText(std::floor(tenths / 10)) + " point " + numberText(std::fmod(tenths, 10));
}

std::string lapTimeText(double ticks) {
  constexpr double kMinute = 60;
  const double seconds = roundDecimals(secondsOfTicks(ticks), 1);
  const double minutes = std::floor(seconds / kMinute);
  const std::string rest = tenthsText(seconds - kMinute * minutes) + " seconds";
  return minutes > 0 ? countedUnit(minutes, "minute") + " " + rest : rest;
}

std::string lapSentence(const GhostLap& lap, const GhostLap* best) {
  std::string text = " Lap " + lapTimeText(lap.ticks);
  if (best == nullptr) return text + ". ";
  if (isBetter(lap, best)) text += ", the best";
  return text + ", " + gapText((lap.ticks - best->ticks) / kTicksPerSecond) + ". ";
}

std::string lapReport(const LapBook& book, const Ghosts& everBest, const Track& track) {
  if (!book.last) return kNoLapYet;
  const GhostLap& last = *book.last;
  std::string text = " Last lap " + lapTimeText(last.ticks) + ". Best of this session " +
                     lapTimeText(book.best->ticks) + ". ";
  if (const GhostLap* best = quickest(everBest, last.kind.isByKeys)) {
    text += "Best of all time " + lapTimeText(best->ticks) + ". ";
  }
  return book.measure ? text + sectorSentences(last, *book.measure, track) : text;
}

}  // namespace vorn
