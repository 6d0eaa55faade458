/// The spoken choosers that every dialogue shares: their differences are fields,
/// not copies. They wait for keys and yield.
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
  bool clearsKeysFirst = false;   ///< `clk` before each time the question is asked
};

/// Asks; Up or Down flips and says the answer, Enter accepts, y and n answer at once.
/// Returns true for yes.
bool askYesNo(GameState& g, const YesNo& question);

/// How a choice from a list behaves beyond its entries.
struct ListChoice {
  std::string prompt;                ///< names entry 1, unless `keepsChoice`
  std::vector<std::string> entries;  ///< numbered from 1
  bool echoesOtherKeys = false;      ///< a key that means nothing is spoken before the question restarts
  /// The question starts where the choice stands: the prompt is said to its end,
  /// and the current entry after it. Else each asking starts at entry 1.
  bool keepsChoice = false;
};

/// Asks; Down and Up move around the list in `choice` and say the entry, Enter
/// accepts, any other key asks again.
void chooseFromList(GameState& g, const ListChoice& question, int& choice);

}  // namespace vorn
