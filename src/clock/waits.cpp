#include "clock/waits.h"

#include <algorithm>
#include <limits>
#include <string>

#include "text/numbers.h"

namespace vorn {
namespace {

constexpr int kTickMilliseconds = 99;
constexpr double kTwoTo31 = 2147483648.0;
constexpr double kSecondsADay = 86400;

template <typename IsCut>
void waitOut(GameState& g, double seconds, IsCut isCut) {
  const std::int32_t start = g.platform.tickCount();
  const auto wait = static_cast<std::uint32_t>(roundEven(1000 * seconds));
  g.waitUntilTick = static_cast<std::int32_t>(static_cast<std::uint32_t>(start) + wait);
  std::uint32_t passed = 0;
  do {
    g.platform.yield(static_cast<int>(wait - passed) + 1);
    passed = millisecondsSince(g, start);
  } while (passed <= wait && !isCut());
}

}  // namespace

std::int32_t elapsedtime(std::int32_t start, std::int32_t now) {
  double difference = static_cast<double>(now) - start;
  if (now < 0 && start >= 1) difference = roundEven((kTwoTo31 + now) + (kTwoTo31 - start));
  if (difference > std::numeric_limits<std::int32_t>::max() ||
      difference < std::numeric_limits<std::int32_t>::min()) {
    throw PlatformError("elapsedtime", std::to_string(start) + ", " + std::to_string(now), "overflow");
  }
  return static_cast<std::int32_t>(difference);
}

std::uint32_t millisecondsSince(const GameState& g, std::int32_t start) {
  return static_cast<std::uint32_t>(g.platform.tickCount()) - static_cast<std::uint32_t>(start);
}

void dyke(GameState& g, double seconds) {
  waitOut(g, seconds, [] { return false; });
}

bool dykeUnlessEscaped(GameState& g, double seconds) {
  waitOut(g, seconds, [&] { return g.escapePressed == 1; });
  return g.escapePressed != 1;
}

void dy(GameState& g, double seconds) {
  const double start = g.platform.secondsSinceMidnight();
  double now = start;
  do {
    g.platform.yield();
    now = g.platform.secondsSinceMidnight();
    if (now < start) now += kSecondsADay;
  } while (now <= start + seconds);
}

void dyz(GameState& g) {
  int passed = elapsedtime(g.lastTickCount, g.platform.tickCount());
  do {
    g.platform.yield(std::clamp(kTickMilliseconds - passed, 0, kTickMilliseconds));
    passed = elapsedtime(g.lastTickCount, g.platform.tickCount());
  } while (passed < kTickMilliseconds);
  g.lastTickCount = g.platform.tickCount();
}

}  // namespace vorn
