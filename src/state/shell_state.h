/// What `shell/` owns.
#pragma once

#include <array>
#include <string>

namespace vorn {

struct ShellState {
  std::array<std::string, 13>
      trackNames;       ///< 1..10 the tracks, 11 and 12 the other entries of the track menu
  int trackChoice = 1;  ///< 1..12, the entry offered in the track menu, then the chosen track
};

}  // namespace vorn
