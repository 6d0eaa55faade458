#include "pit/pit_road.h"

#include "input/events.h"

namespace vorn {

void pitroad(GameState& g, int /*side*/) {
  clk(g);
  g.pitEntryMissed = 1;
}

}  // namespace vorn
