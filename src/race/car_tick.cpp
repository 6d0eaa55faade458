#include "race/car_tick.h"

#include "clock/waits.h"
#include "input/events.h"
#include "race/announcements.h"
#include "race/controls.h"
#include "race/drive_train.h"
#include "race/steering.h"
#include "race/walls.h"
#include "sound/playback.h"
#include "speech/speech.h"

namespace vorn {
namespace {

constexpr double kUnitsBetweenPoles = 3000;

/// A request, the button and the key that make it, and what answers it, in the order in which they are looked
/// at.
struct Request {
  int InputState::*button;
  int InputState::*keyCode;
  void (*answer)(GameState&);
};

constexpr Request kRequests[] = {
    {&InputState::btnSpeedometer, &InputState::keyMapSpeedometer, SaySpeed},
    {&InputState::btnTrackPosition, &InputState::keyMapTrackPosition, saycspot},
    {&InputState::btnSayGear, &InputState::keyMapSayGear, SayGear},
    {&InputState::btnStartEngine, &InputState::keyMapStartEngine, SayGTV},
    {&InputState::btnSayLap, &InputState::keyMapSayLap, SayLap},
    {&InputState::btnHorn, &InputState::keyMapHorn, [](GameState& g) { playhorn(g); }},
    {&InputState::btnElapsedTime, &InputState::keyMapElapsedTime, SayCurTime},
};

/// Returns false where the driver gave up in the crash that a contact became.
bool touchWalls(GameState& g) {
  if (g.lateralPosition <= kLeftWall) {
    c4c(g);
    if (g.escapePressed == 1) return false;
  } else {
    stopWallScrape(g);
  }
  // A car at the left wall is not at the right one: this stops the scrape just begun.
  if (g.lateralPosition < kRightWall) {
    stopWallScrape(g);
  } else {
    c4c(g);
    if (g.escapePressed == 1) return false;
  }
  return true;
}

void answerRequests(GameState& g) {
  for (const Request& request : kRequests) {
    if (isAsked(g, g.*request.button, g.*request.keyCode)) request.answer(g);
  }
  if (g.btnStartEngine == 1) SayGTV(g);  // whatever the input device
}

void passPoles(GameState& g) {
  g.poleDistance += g.speed;
  if (g.poleDistance > kUnitsBetweenPoles) {
    g.poleDistance -= kUnitsBetweenPoles;
    playsignpoll(g);
  }
}

TickReport reportOf(const GameState& g) {
  return {.raceTicks = g.raceTicks,
          .speed = g.speed,
          .gear = g.gear,
          .engineRpm = g.engineRpm,
          .soundRpm = g.soundRpm,
          .fuel = g.fuel,
          .lapPosition = g.lapPosition,
          .lateralPosition = g.lateralPosition,
          .lapsCompleted = g.lapsCompleted,
          .segment = g.segment,
          .poleDistance = g.poleDistance,
          .joySteering = g.joySteering,
          .joyGasBrake = g.joyGasBrake,
          .steerKeyTicks = g.steerKeyTicks,
          .marblesTicks = g.marblesTicks,
          .wallTicks = g.wallTicks,
          .pit = g.pit};
}

}  // namespace

void readShifts(GameState& g, int atMostMs) {
  readRaceDevice(g);
  g.platform.yield(atMostMs);
  if (isAsked(g, g.btnUpShift, g.keyMapUpShift)) {
    UpShift(g);
  } else {
    g.upShiftHeld = 0;
  }
  if (isAsked(g, g.btnDownShift, g.keyMapDownShift)) {
    DownShift(g);
  } else {
    g.downShiftHeld = 0;
  }
}

void checkstuff(GameState& g) {
  if (!touchWalls(g)) return;                               // scrape, slow down, crash
  overRev(g);                                               // engine pitch beyond the gear's range
  readShifts(g);                                            // device, one gear change a press
  agp(g);                                                   // gas to speed
  ass(g);                                                   // automatic speedometer
  prpm(g);                                                  // speed to revolutions and engine sound
  if (!SteerIt(g)) return;                                  // steering, tyres, marbles
  SetWind(g);                                               // both walls by place across the track
  dobk(g);                                                  // brake
  answerRequests(g);                                        // spoken on request, horn
  burnFuel(g);                                              // revolutions to fuel
  if (g.speed == 0 && g.fuel == 0) g.engineBuffer->Stop();  // out of fuel
  passPoles(g);                                             // light poles
  g.lapPosition += g.speed;
  ++g.raceTicks;
  g.platform.carTicked(reportOf(g));
  dyz(g);  // until the tick is over
}

}  // namespace vorn
