/// Lessons: the player drives a second game on a real track, and hears how it went.
#pragma once

#include "codriver/menu.h"

namespace vorn {

/// Offers the lessons until the player leaves with Escape. A lesson is tried until its goal is reached or the
/// player leaves it. Waits.
void giveLessons(Cabin& cabin);

}  // namespace vorn
