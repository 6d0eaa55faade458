/// Learn the sounds: every sound that a player meets, by name and meaning, played as the game plays it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "state/game_state.h"

namespace vorn {

struct TourSound {
  std::string text;                      ///< the name and, in a sentence, what it tells
  std::string file;                      ///< base name of the recording
  std::function<void(GameState&)> play;  ///< until it ends or a key is pressed; waits
};

struct TourGroup {
  std::string name;
  std::vector<TourSound> sounds;
};

/// The groups in the order in which they are offered; the cues of each track in the order of its segments.
std::vector<TourGroup> soundTour();

/// Offers the groups and their sounds until the player leaves with Escape. `g` has no sounds loaded and none
/// afterwards; its options are as before. Waits.
void takeSoundTour(GameState& g);

}  // namespace vorn
