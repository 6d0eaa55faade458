/// The game as somebody plays it, whatever he plays it on.
#pragma once

#include <functional>
#include <string>

#include "codriver/codriver_platform.h"

namespace vorn {

struct LiveGame {
  CodriverOptions codriver = {};
  std::function<void(GameState& game)> prepare = {};  ///< before it begins
  std::function<void(const std::string& text)> diagnose =
      {};  ///< gets what has ended it, for whoever looks into it
};

/// Plays with the co-driver until the player leaves. Returns the exit status: 1 after an error, which the
/// voice says, where there is one, and a box shows.
int playLive(Platform& platform, const LiveGame& live);

}  // namespace vorn
