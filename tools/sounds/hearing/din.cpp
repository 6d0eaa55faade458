#include "din.h"

#include <algorithm>
#include <functional>
#include <random>

#include "spectrogram.h"

namespace vorn::hearing {
namespace {

constexpr std::size_t kTicks = 30;
constexpr std::size_t kTick = kMixRate / 10, kCrossfade = kMixRate * 6 / 1000;
constexpr double kNearWall = -10, kFarWall = -21;  // dB
constexpr std::size_t kFarWallAhead = 44158 / 2;   // samples
constexpr unsigned kJitter = 100;                  // samples

}  // namespace

Signal steadyEngine(const Signal& tape, std::size_t place) {
  Signal sound(kTicks * kTick);
  std::mt19937 random(1);
  for (std::size_t tick = 0; tick < kTicks; ++tick) {
    const std::size_t from = place + random() % kJitter;
    const std::size_t to = std::min(tape.size(), from + kTick + kCrossfade);
    Signal stretch(tape.begin() + static_cast<std::ptrdiff_t>(from),
                   tape.begin() + static_cast<std::ptrdiff_t>(to));
    synth::fadeIn(stretch, kCrossfade);
    synth::fadeOut(stretch, kCrossfade);
    for (std::size_t i = 0; i < stretch.size(); ++i) sound[(tick * kTick + i) % sound.size()] += stretch[i];
  }
  return sound;
}

Signal dinOf(const DinSources& sources) {
  Signal sound = steadyEngine(sources.engine, sources.enginePlace);
  for (std::size_t i = 0; i < sound.size(); ++i) {
    sound[i] += synth::gainOf(kNearWall) * sources.wall[i % sources.wall.size()];
    sound[i] += synth::gainOf(kFarWall) * sources.wall[(i + kFarWallAhead) % sources.wall.size()];
    if (sources.tyre != nullptr) sound[i] += (*sources.tyre)[i % sources.tyre->size()];
  }
  return sound;
}

Levels strongLevels(const Signal& sound, double rate) {
  return levelsIn(thirdOctaves(250, 6300), sound, rate, 0.9);
}

Levels usualLevels(const Signal& sound, double rate) {
  return levelsIn(thirdOctaves(250, 6300), sound, rate, 0.5);
}

double clearance(const Levels& sound, const Levels& rest, std::size_t rank) {
  Levels above = sound;
  for (std::size_t band = 0; band < above.size(); ++band) above[band] -= rest[band];
  std::sort(above.begin(), above.end(), std::greater<>());
  return above[rank];
}

}  // namespace vorn::hearing
