#include "tracks/catalogue.h"

namespace vorn {
namespace {

constexpr Push kStraight{};

constexpr Push left(double fixed, double divisor) {
  return {Turn::kLeft, fixed, divisor};
}

// length, cue, scale, pan, push
constexpr Segment kMapleSegments[] = {
    {30000, 1, 30, -3000, kStraight},      {9000, 2, 15, -2000, left(0.48, 125)},
    {9000, 3, 15, -2000, left(0.48, 125)}, {30000, 4, 30, -3000, kStraight},
    {9000, 5, 15, -2000, left(1.0, 84)},   {4800, 10, 20, -3000, kStraight},
    {9000, 6, 15, -2000, left(1.3, 69)},
};

}  // namespace

constexpr Track kMaple{" Welcome to the Maple Leaf Try Oval Track ", 1.84, kMapleSegments};

}  // namespace vorn
