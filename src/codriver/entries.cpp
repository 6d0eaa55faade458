#include "codriver/entries.h"

#include <algorithm>

#include "clock/waits.h"
#include "input/events.h"
#include "shell/menus.h"

namespace vorn {
namespace {

bool isAnyKeyDown(GameState& g) {
  readKeyboard(g);
  return std::any_of(g.keyboardState.begin(), g.keyboardState.end(),
                     [](std::uint8_t key) { return key != 0; });
}

/// No longer than a key that is stuck.
void waitForHandsOff(GameState& g) {
  constexpr std::uint32_t kLongestMs = 3000;
  const std::int32_t start = g.platform.tickCount();
  while (isAnyKeyDown(g) && millisecondsSince(g, start) < kLongestMs) g.platform.yield();
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
    chosen(static_cast<std::size_t>(number - 1));
    waitForHandsOff(g);
  }
  g.escapePressed = 0;
}

}  // namespace vorn
