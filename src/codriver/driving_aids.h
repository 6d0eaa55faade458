/// The aids that help to drive: turn calls, the slider, ticks for shift and brake, and warnings.
#pragma once

#include <memory>
#include <vector>

#include "codriver/aid.h"

namespace vorn {

/// In the order in which they are told of a tick. The cockpit is not owned.
std::vector<std::unique_ptr<Aid>> drivingAids(Cockpit& cockpit);

}  // namespace vorn
