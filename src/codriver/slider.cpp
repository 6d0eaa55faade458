#include "codriver/slider.h"

#include <algorithm>
#include <cmath>

#include "race/steering.h"
#include "race/walls.h"

namespace vorn {
namespace {

constexpr double kSafe = 22;  // lateral units to either side of the middle
constexpr double kSafeOnRamp = 4;
constexpr double kFarOffRamp = 25;  // from the middle; the tone is at its highest there
constexpr double kRunUp = 6000;     // units before a jump over which its ramp is made for

constexpr int kSoftest = -2600, kLoudest = -500;  // hundredths of a decibel
constexpr int kLowest = 260, kHighest = 1040;     // hertz
constexpr int kPan = 2500;

constexpr int kKeyBuildUp = 200, kFullLock = 10000;

double safe(bool isBeforeJump) {
  return isBeforeJump ? kSafeOnRamp : kSafe;
}
double wall(bool isBeforeJump) {
  return isBeforeJump ? kFarOffRamp : kMiddle;
}

}  // namespace

double placeAhead(const Track& track, const TickReport& tick, const Hands& hands) {
  RaceState car;
  car.speed = tick.speed;
  car.lapPosition = tick.lapPosition;
  car.lateralPosition = tick.lateralPosition;
  std::size_t segment = static_cast<std::size_t>(std::max(tick.segment, 1) - 1);
  int steering = hands.steering;
  for (int i = 0; i < kSliderTicks && car.speed > 0; ++i) {
    if (car.lapPosition >= track.segments[segment].length) {
      car.lapPosition -= track.segments[segment].length;
      segment = (segment + 1) % track.segments.size();
    }
    pushCar(car, track.segments[segment].push);
    if (hands.byKeys && steering != 0) {
      steering = std::clamp(steering + (steering > 0 ? kKeyBuildUp : -kKeyBuildUp), -kFullLock, kFullLock);
    }
    car.lateralPosition += lateralStep(steering);
    car.lapPosition += car.speed;
  }
  return std::clamp(car.lateralPosition, kLeftWall, kRightWall);
}

bool isBeforeJump(const Track& track, const TickReport& tick) {
  if (tick.segment < 1) return false;
  const Segment& segment = track.segments[static_cast<std::size_t>(tick.segment - 1)];
  return segment.atEnd != nullptr && segment.length - tick.lapPosition < kRunUp;
}

std::optional<Tone> sliderTone(double place, bool isBeforeJump) {
  const double off = std::fabs(place - kMiddle) - safe(isBeforeJump);
  if (off <= 0) return std::nullopt;
  const double danger = std::min(off / (wall(isBeforeJump) - safe(isBeforeJump)), 1.0);
  return Tone{static_cast<int>(std::lround(kLowest * std::pow(double{kHighest} / kLowest, danger))),
              static_cast<int>(std::lround(kSoftest + danger * (kLoudest - kSoftest))),
              place < kMiddle ? -kPan : kPan};
}

double placeOfTone(const Tone& tone, bool isBeforeJump) {
  const double danger = std::log(double{1} * tone.pitch / kLowest) / std::log(double{kHighest} / kLowest);
  const double off = safe(isBeforeJump) + danger * (wall(isBeforeJump) - safe(isBeforeJump));
  return kMiddle + (tone.pan < 0 ? -off : off);
}

}  // namespace vorn
