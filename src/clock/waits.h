/// The waits of the whole game. Every one yields on each pass, so that keys and
/// the controller keep arriving.
#pragma once

#include <cstdint>

#include "state/game_state.h"

namespace vorn {

/// Milliseconds from `start` to `now`, two readings of the tick count, right
/// across its wrap. Throws `PlatformError` where the plain difference does not fit 32 bits.
std::int32_t elapsedtime(std::int32_t start, std::int32_t now);

/// Milliseconds since the tick count read `start`; right across the wrap whatever `start` was.
std::uint32_t millisecondsSince(const GameState& g, std::int32_t start);

/// Waits `seconds` (real) by the millisecond tick count: the usual wait.
void dyke(GameState& g, double seconds);

/// The same, but over at once when Escape is pressed. Returns false then.
bool dykeUnlessEscaped(GameState& g, double seconds);

/// Waits `seconds` (real) by the clock of the day, across midnight too.
void dy(GameState& g, double seconds);

/// Waits for the end of the race tick: at least 99 ms after the end of the last.
void dyz(GameState& g);

}  // namespace vorn
