/// The co-driver's menu and what its entries work with.
///
/// To add an entry: write a procedure that takes the `Cabin` and give it a row in
/// `kEntries` (menu.cpp), in the order in which the entries are heard.
#pragma once

#include <string>

#include "codriver/guest.h"
#include "codriver/settings.h"
#include "state/game_state.h"

namespace vorn {

/// What an entry works with while the game waits.
struct Cabin {
  GameState& game;  ///< a second game: the player's devices and voice, and his settings; no sounds are loaded
  const GameState& waiting;  ///< the game that waits
  AidSettings& settings;     ///< kept when the menu is left
  Files& files;              ///< the player's own, which a guest's game only reads
  Seat& seat;                ///< for guests of the entry's own: `GuestPlatform(game.platform, seat)`
};

/// Offers the entries until the player leaves with Escape. Waits.
void runCodriverMenu(Cabin& cabin);

}  // namespace vorn
