#include "codriver/entries.h"

#include <algorithm>
#include <cstdlib>

#include "clock/waits.h"
#include "input/events.h"
#include "shell/menus.h"

namespace vorn {
namespace {

constexpr int kPushedPedal = 5555;  // where a menu takes it for a move

bool isAnythingHeld(GameState& g) {
  readKeyboard(g);
  readController(g);
  return std::abs(g.joyGasBrake) > kPushedPedal || std::any_of(g.keyboardState.begin(), g.keyboardState.end(),
                                                               [](std::uint8_t key) { return key != 0; });
}

/// No longer than for a key that is stuck. A button that is held counts as up until it is released.
void waitForHandsOff(GameState& g) {
  constexpr std::uint32_t kLongestMs = 3000;
  const std::int32_t start = g.platform.tickCount();
  while (isAnythingHeld(g) && millisecondsSince(g, start) < kLongestMs) g.platform.yield();
  spendButtons(g);
  clk(g);
}

}  // namespace

void offerEntries(GameState& g, const std::string& title, const std::vector<std::string>& entries,
                  const std::function<void(std::size_t)>& chosen) {
  waitForHandsOff(g);
  const Menu menu{.openingPrompt = title + entries.front(), .entries = entries, .escapeLeaves = true};
  int cursor = 0;
  openMenu(g, menu, cursor);
  for (int number = 0; (number = offerMenu(g, menu, cursor)) != kNoEntry;) {
    g.escapePressed = 0;
    spendButtons(g);
    chosen(static_cast<std::size_t>(number - 1));
    waitForHandsOff(g);
  }
  g.escapePressed = 0;
}

}  // namespace vorn
