#include "tracks/track.h"

namespace vorn {

double lateralPush(const Push& push, double speed) {
  switch (push.turn) {
    case Turn::kLeft:
      return push.fixed + speed / push.divisor;
    case Turn::kRight:
      return -(push.fixed + speed / push.divisor);
    case Turn::kNone:
      break;
  }
  return 0;
}

void pushCar(RaceState& car, const Push& push) {
  if (push.rule) {
    push.rule(car);
  } else if (car.speed != 0) {
    car.lateralPosition += lateralPush(push, car.speed);
  }
}

double cueLength(const Segment& segment) {
  return segment.cueLength > 0 ? segment.cueLength : segment.length;
}

Cue segmentCue(const Segment& segment) {
  return {segment.cue, cueLength(segment), segment.scale, segment.pan};
}

double lapLength(const Track& track) {
  double length = 0;
  for (const Segment& segment : track.segments) length += segment.length;
  return length;
}

}  // namespace vorn
