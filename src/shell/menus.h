/// Spoken menus: the player hears one entry at a time and moves up and down with
/// the controller or the keyboard.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "state/game_state.h"

namespace vorn {

struct Menu {
  std::string openingPrompt = {};         ///< names the first entry
  std::vector<std::string> entries = {};  ///< numbered from 1
  double pauseBeforeEntry = 0;            ///< seconds, before an entry is spoken after a move
  bool escapeLeaves = false;              ///< Escape leaves without a choice
};

/// What a menu returns when it is left without a choice.
inline constexpr int kNoEntry = 0;

/// Puts the cursor on entry 1 and queues the opening prompt.
void openMenu(GameState& g, const Menu& menu, int& cursor);
/// Offers the entries from the cursor on, saying nothing before the first move,
/// until one is selected. Returns its number, or `kNoEntry`. Waits.
int offerMenu(GameState& g, const Menu& menu, int& cursor);

}  // namespace vorn
