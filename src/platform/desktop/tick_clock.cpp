#include "platform/desktop/tick_clock.h"

#include <SDL_events.h>

#include <thread>

#include "platform/common/system_clock.h"

namespace vorn {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// SDL wakes up to a millisecond late and up to one early.
constexpr milliseconds kSdlIsLate{2};

}  // namespace

std::int32_t TickClock::now() const {
  return steadyTickCount();
}

void TickClock::waitForEvent(int ms) const {
  const milliseconds end = wholeMilliseconds() + milliseconds(ms);
  const milliseconds forSdl = end - wholeMilliseconds() - kSdlIsLate;
  if (forSdl > milliseconds(0) && SDL_WaitEventTimeout(nullptr, static_cast<int>(forSdl.count())) != 0) {
    return;
  }
  std::this_thread::sleep_until(steady_clock::time_point(end));
}

void TickClock::sleep(int ms) {
  std::this_thread::sleep_for(milliseconds(ms));
}

}  // namespace vorn
