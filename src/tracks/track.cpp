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

}  // namespace vorn
