/// What the machine's own clock says, in local time.
#pragma once

#include <chrono>
#include <cstdint>

#include "platform/platform.h"

namespace vorn {

/// Of the steady clock, at `at`.
std::chrono::milliseconds wholeMilliseconds(
    std::chrono::steady_clock::time_point at = std::chrono::steady_clock::now());
/// The same as a tick count: it wraps from 2^31 - 1 to -2^31.
std::int32_t steadyTickCount(std::chrono::steady_clock::time_point at = std::chrono::steady_clock::now());

double localSecondsSinceMidnight();  ///< 0 up to 86400
Date localDate();

/// A seed for the generator of chance: another one from moment to moment.
std::uint64_t clockSeed();

}  // namespace vorn
