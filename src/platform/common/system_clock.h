/// What the machine's own clock says, in local time.
#pragma once

#include <cstdint>

#include "platform/platform.h"

namespace vorn {

double localSecondsSinceMidnight();  ///< 0 up to 86400
Date localDate();

/// A seed for the generator of chance: another one from moment to moment.
std::uint64_t clockSeed();

}  // namespace vorn
