#include "codriver/ghost.h"

#include <algorithm>
#include <cmath>

#include "codriver/lap_times.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr double kEarshot = 4000;    // units, two seconds and more
constexpr double kNearest = -300;    // hundredths of a decibel, beside the car
constexpr double kFarthest = -3300;  // at the end of earshot
constexpr double kPanPerLateralUnit = 40;
constexpr double kWidestPan = 3000;
constexpr double kPitchStep = 0.25;  // to either side
constexpr double kBeside = 300;      // units within which ahead turns into behind

template <typename Matches>
const GhostLap* firstOf(const Ghosts& ghosts, Matches matches) {
  const auto found = std::find_if(ghosts.begin(), ghosts.end(), matches);
  return found == ghosts.end() ? nullptr : &*found;
}

double between(double from, double to, double share) {
  return from + (to - from) * share;
}

}  // namespace

const GhostLap* ghostOf(const Ghosts& ghosts, const LapKind& kind) {
  return firstOf(ghosts, [&](const GhostLap& lap) { return lap.kind == kind; });
}

const GhostLap* rivalOf(const Ghosts& ghosts, const LapKind& kind) {
  if (const GhostLap* own = ghostOf(ghosts, kind)) return own;
  return firstOf(ghosts, [&](const GhostLap& lap) { return lap.kind.isFlying == kind.isFlying; });
}

bool keepBetter(Ghosts& ghosts, const GhostLap& lap) {
  for (GhostLap& kept : ghosts) {
    if (kept.kind != lap.kind) continue;
    if (lap.ticks >= kept.ticks) return false;
    kept = lap;
    return true;
  }
  ghosts.push_back(lap);
  return true;
}

std::optional<GhostPlace> ghostAt(const GhostLap& ghost, double ticks) {
  const auto& places = ghost.places;
  if (places.empty()) return std::nullopt;
  const auto next = std::find_if(places.begin(), places.end(),
                                 [&](const GhostPlace& place) { return place.ticks >= ticks; });
  if (next == places.begin()) return GhostPlace{ticks, next->distance, next->lateral};
  const GhostPlace& before = *(next - 1);
  if (next == places.end()) {
    const GhostPlace& earlier = places.size() > 1 ? *(next - 2) : before;
    const double time = before.ticks - earlier.ticks;
    const double speed = time > 0 ? (before.distance - earlier.distance) / time : 0;
    return GhostPlace{ticks, before.distance + speed * (ticks - before.ticks), before.lateral};
  }
  const double share = (ticks - before.ticks) / (next->ticks - before.ticks);
  return GhostPlace{ticks, between(before.distance, next->distance, share),
                    between(before.lateral, next->lateral, share)};
}

double ghostTicksAt(const GhostLap& ghost, double distance) {
  const auto& places = ghost.places;
  const auto next = std::find_if(places.begin(), places.end(),
                                 [&](const GhostPlace& place) { return place.distance >= distance; });
  if (next == places.end()) return ghost.ticks;
  if (next == places.begin()) return next->ticks;
  const GhostPlace& before = *(next - 1);
  const double way = next->distance - before.distance;
  return between(before.ticks, next->ticks, (distance - before.distance) / way);
}

GhostSound ghostSound(double ahead, double toTheRight) {
  const double away = std::fabs(ahead) / kEarshot;
  return {.volume = roundToInt(between(kNearest, kFarthest, std::min(away, 1.0))),
          .pan = roundToInt(std::clamp(toTheRight * kPanPerLateralUnit, -kWidestPan, kWidestPan)),
          .pitch = 1 + kPitchStep * std::clamp(ahead / kBeside, -1.0, 1.0),
          .isInReach = away < 1};
}

std::string gapText(double seconds) {
  const std::string amount = tenthsText(std::fabs(seconds));
  if (amount == tenthsText(0)) return "level";
  return amount + (seconds > 0 ? " behind" : " ahead");
}

}  // namespace vorn
