/// What a driver hears besides the cue. Pure.
#pragma once

#include <cstddef>
#include <vector>

#include "synth/signal.h"

namespace vorn::hearing {

using synth::Signal;

/// The sources of a din, all at the rate of the mix.
struct DinSources {
  const Signal& engine;          ///< its tape
  std::size_t enginePlace;       ///< where on it the revolutions are, samples
  const Signal& wall;            ///< heard from both sides, the far copy from half-way on
  const Signal* tyre = nullptr;  ///< at hard steering; null: straight ahead
};

constexpr int kMixRate = 22050;

/// Three seconds of an engine as the game plays it at steady revolutions: its tape set back to
/// about `place` (samples) ten times a second. Comes round to its own start.
Signal steadyEngine(const Signal& tape, std::size_t place);

/// Three seconds in one ear with the car in the middle of the track: the engine at steady
/// revolutions between two copies of a wall sound.
Signal dinOf(const DinSources& sources);

/// Levels in third octaves from 250 Hz to 6.3 kHz, dB.
using Levels = std::vector<double>;

/// A sound at its stronger moments.
Levels strongLevels(const Signal& sound, double rate);
/// What is usual of it.
Levels usualLevels(const Signal& sound, double rate);

/// By how much the one stands above the other where it does so most, dB; `rank` 1: where
/// it does so second most, and so on.
double clearance(const Levels& sound, const Levels& rest, std::size_t rank = 0);

}  // namespace vorn::hearing
