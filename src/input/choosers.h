/// The spoken choosers that every dialogue shares. They wait for keys and yield.
#pragma once

#include <string>
#include <vector>

#include "state/game_state.h"

namespace vorn {

/// How a yes/no question behaves beyond its text.
struct YesNo {
  std::string prompt;  ///< ends with the answer it starts at
  bool startsAtYes = true;
  bool f1AsksAgain = true;        ///< else F1 does nothing
  bool echoesEveryKey = true;     ///< y and n are spoken too; else only keys that mean nothing
  bool otherKeyAsksAgain = true;  ///< a key that means nothing restarts the question
};

/// Asks; Up or Down flips and says the answer, Enter accepts, y and n answer at once.
/// Returns true for yes.
bool askYesNo(GameState& g, const YesNo& question);

}  // namespace vorn
