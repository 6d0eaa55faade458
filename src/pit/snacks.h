/// What a driver is handed for a clean stop.
#pragma once

#include <string>

#include "state/game_state.h"

namespace vorn {

inline constexpr int kSnacks = 82;

/// The sentence that hands over snack 1..82; any other number throws `std::out_of_range`. Pure.
std::string snackSentence(int number);
/// Picks a snack, all with equal chances, and leaves its sentence in `typedText`. Does not wait.
void getfood(GameState& g);

}  // namespace vorn
