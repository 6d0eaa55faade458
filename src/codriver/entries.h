/// A menu of the co-driver's that comes back after each choice.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "state/game_state.h"

namespace vorn {

/// Offers `entries` until the player leaves with Escape, and calls `chosen` with the number of each that he
/// takes, from 0. What he has pressed to end a choice is no choice of its own. Waits.
void offerEntries(GameState& g, const std::string& title, const std::vector<std::string>& entries,
                  const std::function<void(std::size_t)>& chosen);

}  // namespace vorn
