/// The car in the middle of a race, for one rule at a time to be looked at.
#pragma once

#include "race/car_tick.h"
#include "race/cue.h"
#include "sound/playback.h"
#include "support/game_rig.h"

namespace vorn {

/// In `gear` at `speed` in the middle of the track, loops and cue running, no
/// speed mark due, the tick about to begin.
inline void putOnTrack(GameRig& rig, double speed, int gear) {
  GameState& g = rig.g;
  g.speed = speed;
  g.gear = gear;
  g.lateralPosition = 50;
  g.fuel = 22;
  g.steerDrag = 1.84;
  g.speedMarkSaid.fill(1);
  startwarn(g, {1, 30000, 30, -3000});
  sars(g);
  g.engineBuffer->Play(SoundBuffer::kLooping);
  g.lastTickCount = g.platform.tickCount();
}

/// The car after `count` more ticks.
inline const GameState& tick(GameRig& rig, int count = 1) {
  for (int i = 0; i < count; ++i) checkstuff(rig.g);
  return rig.g;
}

}  // namespace vorn
