/// The cue: the sound ahead that tells the driver on which side the next turn
/// lies and how near it is. It rises along its way and moves with the car.
#pragma once

#include <string>

#include "state/game_state.h"

namespace vorn {

struct Cue {
  int number;     ///< of its sound file, vorn1t1 and on
  double length;  ///< units of `lapPosition` over which it rises
  double scale;   ///< how steeply it rises, hundredths of a decibel a percent of the way
  int pan;        ///< where it stands, hundredths of a decibel, negative: left
};

/// The base name of a cue's sound file.
std::string cueFile(int number);

/// Volume of a cue, hundredths of a decibel -10000..0, for a car `lapPosition`
/// units along its way. Pure.
double cueVolume(const RaceState& car, int soundVolume);
/// Pan of a cue, -10000..10000: the further right the car, the further left it is heard. Pure.
double cuePan(const RaceState& car);

/// From now on `awarn` moves what `warnBuffer` holds, a voice that is said once, as `cue` says.
void followCue(RaceState& car, const Cue& cue);
/// Starts `cue`, looping and nearly silent, in place of the last one. Does not wait.
void startwarn(GameState& g, const Cue& cue);
/// Lets a cue that was stopped sound again; a voice that is said once stays silent.
void resumeCue(GameState& g);
/// Moves the cue with the car: louder toward its end, panned by where the car is.
void awarn(GameState& g);

}  // namespace vorn
