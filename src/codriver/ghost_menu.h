/// The ghost in the co-driver's menu: whose laps are raced, and laps from and for friends.
#pragma once

#include "codriver/menu.h"

namespace vorn {

/// Offers it all until the player leaves with Escape. Waits.
void arrangeGhost(Cabin& cabin);

}  // namespace vorn
