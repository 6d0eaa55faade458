#include "shell/menus.h"

#include "clock/waits.h"
#include "input/events.h"
#include "speech/speech.h"
#include "state/key_names.h"

namespace vorn {
namespace {

constexpr int kStickUp = -5555;
constexpr int kStickDown = 5555;
constexpr double kPauseBetweenMoves = 0.2;     // seconds; it spaces a key that is held
constexpr double kPauseAfterController = 0.3;  // so that one push is not read as several

constexpr int kLookAgainMs = 30;  // at the latest: a key or a move of the controller comes through at once

enum class Action { kNone, kSelect, kPrevious, kNext, kBackToTop, kLeave };

/// One look at the devices. A later test overrides an earlier one, and each reads
/// its field when its turn comes, after the pauses before it.
Action look(GameState& g, const Menu& menu) {
  Action action = Action::kNone;
  const auto controller = [&](bool isPushed, Action wanted) {
    if (!isPushed) return;
    dyke(g, kPauseAfterController);
    action = wanted;
  };
  const auto keyboard = [&](int keyCode, Action wanted) {
    if (isKeyDown(g, keyCode)) action = wanted;
  };
  if (g.joystickPresent == 1) pollController(g);
  readKeyboard(g);
  g.platform.yield(kLookAgainMs);
  controller(g.btnSpeedometer == 1, Action::kSelect);
  keyboard(g.keyMapEnter, Action::kSelect);
  controller(g.joyGasBrake < kStickUp, Action::kPrevious);
  keyboard(g.keyMapUpShift, Action::kPrevious);
  controller(g.joyGasBrake > kStickDown, Action::kNext);
  keyboard(g.keyMapDownShift, Action::kNext);
  controller(g.btnUpShift == 1, Action::kBackToTop);
  if (menu.escapeLeaves && g.lastKeyCode == key::kEscape) action = Action::kLeave;
  if (menu.escapeLeaves && g.lastKeyCode == key::kF1) g.lastKeyCode.clear();
  return action;
}

Action waitForAction(GameState& g, const Menu& menu) {
  Action action = Action::kNone;
  while (action == Action::kNone) action = look(g, menu);
  return action;
}

/// Tells the platform for as long as the player stands in a menu.
class Offer {
 public:
  explicit Offer(Platform& platform) : platform_(platform) { platform_.menuOffered(true); }
  ~Offer() { platform_.menuOffered(false); }
  Offer(const Offer&) = delete;
  Offer& operator=(const Offer&) = delete;

 private:
  Platform& platform_;
};

}  // namespace

void openMenu(GameState& g, const Menu& menu, int& cursor) {
  cursor = 1;
  say2(g, menu.openingPrompt);
}

int offerMenu(GameState& g, const Menu& menu, int& cursor) {
  const int last = static_cast<int>(menu.entries.size());
  const Offer offer(g.platform);
  readKeyboard(g);  // so that the key that has answered a prompt just now is not taken for a choice
  for (;;) {
    dyke(g, kPauseBetweenMoves);
    const Action action = waitForAction(g, menu);
    stopspeech(g);
    switch (action) {
      case Action::kSelect:
        return cursor;
      case Action::kLeave:
        clk(g);
        return kNoEntry;
      case Action::kBackToTop:
        openMenu(g, menu, cursor);
        continue;
      case Action::kPrevious:
        cursor = cursor > 1 ? cursor - 1 : last;
        break;
      default:
        cursor = cursor < last ? cursor + 1 : 1;
        break;
    }
    if (menu.pauseBeforeEntry > 0) dyke(g, menu.pauseBeforeEntry);
    say2(g, menu.entries[cursor - 1]);
  }
}

}  // namespace vorn
