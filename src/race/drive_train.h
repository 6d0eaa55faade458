/// Gas, gears, brake and the engine sound: how the pedals become speed. The sounds
/// are tapes: their play position is moved to the stretch that belongs to the
/// revolutions or the speed.
#pragma once

#include "state/game_state.h"

namespace vorn {

/// Gear table: what each gear pulls to and gives back, a row a gear (index 0: neutral).
struct GearLaw {
  double accelerate;  ///< mph gained a tick below the target
  double cap;         ///< mph it is held at after accelerating
  double coast;       ///< mph lost a tick at or above the target
  double revRange;    ///< mph that make 100 percent revolutions
};

/// How far the pedal is down, 0..20, for a gas/brake axis reading.
int gasOfAxis(int joyGasBrake);
/// What `speed` tends to with this gas (0..20) in this gear, mph.
double targetSpeed(int gas, int gear);
/// Moves `speed` one tick toward what gas (0..20) and gear ask for. Never below 0; neutral changes nothing.
void applyGas(RaceState& car, int gas);

/// One tick of gas and speed.
void agp(GameState& g);
/// Revolutions from speed and gear, and the engine sound with them.
void prpm(GameState& g);
/// One step of the engine sound toward `engineRpm` while the car stands. Waits 20 ms.
void PlayRPM(GameState& g);
/// Moves the engine sound to the place of `soundRpm`.
void aprpms(GameState& g);
/// One gear change; yields once, and within playback. Nothing until the control has been released.
void UpShift(GameState& g);
void DownShift(GameState& g);
/// One tick of braking.
void dobk(GameState& g);
/// Raises the pitch of the engine where it turns too fast for its gear.
void overRev(GameState& g);
/// The engine at the pitch of its tape again.
void resetEnginePitch(SoundState& sound);
/// One tick of burning fuel.
void burnFuel(RaceState& car);

}  // namespace vorn
