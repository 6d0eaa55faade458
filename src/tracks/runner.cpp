#include "tracks/runner.h"

#include "clock/waits.h"
#include "input/events.h"
#include "pit/pit_road.h"
#include "race/car_tick.h"
#include "race/cue.h"
#include "race/race_clock.h"
#include "race/session.h"
#include "sound/playback.h"
#include "speech/speech.h"
#include "tracks/laps_entry.h"

namespace vorn {
namespace {

constexpr int kPitSide = 1;

enum class LapResult { kCompleted, kPitStop, kAbandoned };

bool isPitRoadAsked(const GameState& g) {
  return g.btnPitRoad == 1 || isKeyDown(g, g.keyMapPitRoad);
}

void leaveSegment(GameState& g) {
  g.warnBuffer->Stop();
  playmark(g);
}

/// At least one tick, whatever the car brings along.
LapResult driveSegment(GameState& g, const Segment& segment, bool isFirst) {
  do {
    pushCar(g, segment.push);
    awarn(g);
    if (g.escapePressed == 1) return LapResult::kAbandoned;
    if (isFirst && isPitRoadAsked(g)) {
      pitroad(g, kPitSide);
      if (g.escapePressed == 1) return LapResult::kAbandoned;
      if (g.pitEntryMissed == 0) return LapResult::kPitStop;
    }
    checkstuff(g);
  } while (g.lapPosition < segment.length);
  return LapResult::kCompleted;
}

LapResult driveLap(GameState& g, const Track& track) {
  for (std::size_t i = 0; i < track.segments.size(); ++i) {
    const Segment& segment = track.segments[i];
    g.segment = static_cast<int>(i) + 1;
    startwarn(g, segmentCue(segment));
    if (i > 0) g.lapPosition -= track.segments[i - 1].length;
    const LapResult result = driveSegment(g, segment, i == 0);
    if (result != LapResult::kCompleted) return result;
    if (i + 1 == track.segments.size()) break;
    if (segment.atEnd) segment.atEnd(g, segment, track.segments[i + 1]);
    if (g.escapePressed == 1) return LapResult::kAbandoned;
    leaveSegment(g);
  }
  return LapResult::kCompleted;
}

}  // namespace

bool driveLaps(GameState& g, const Track& track) {
  for (;;) {
    const LapResult result = driveLap(g, track);
    if (result == LapResult::kAbandoned) return false;
    if (result == LapResult::kPitStop) continue;  // the lap begins anew
    ++g.lapsCompleted;
    if (!(g.lapsCompleted < g.lapsToRun)) return true;
    leaveSegment(g);
    g.lapPosition -= track.segments.back().length;
    g.poleDistance = 0;
  }
}

void runRace(GameState& g, const Track& track) {
  g.steerDrag = track.steerDrag;
  if (track.rule) track.rule(g);
  sars(g);
  dyke(g, 0.2);
  say(g, track.welcome);
  dyke(g, 0.2);
  gltr(g);
  if (g.escapePressed == 1) return;
  dyke(g, 0.2);
  startrace(g);
  if (g.escapePressed == 1) return;
  if (!driveLaps(g, track)) return;
  settimes(g, track.segments.back().length);
  EndTheRace(g);
}

}  // namespace vorn
