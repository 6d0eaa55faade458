#include "desktop/driver.h"

#include <chrono>

namespace vorn {

std::string PositionDriver::driveToTheEnd(int longestSeconds) {
  // Behind the last lap the engine is revved and stopped without a word, which takes a busy machine long.
  constexpr int kPatienceMs = 8000;
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(longestSeconds);
  player_.keys.press("RightCtrl");  // held, it is answered again and again
  while (std::chrono::steady_clock::now() < end) {
    const auto text = player_.hear(kPatienceMs);
    if (!text) {
      restart();
    } else if (*text == kSoundIsBack) {
      continue;
    } else if (text->find_first_not_of("0123456789") == std::string::npos) {
      steer(std::stoi(*text));
    } else {
      hold("");
      player_.keys.release("RightCtrl");
      return *text;
    }
  }
  return "the race did not end in time";
}

void PositionDriver::steer(int position) {
  constexpr double kLookAhead = 0.7;  // of the way between two positions
  constexpr double kAim = 42;
  constexpr double kNearEnough = 3;
  const double expected = position + kLookAhead * (position - lastPosition_) - kAim;
  lastPosition_ = position;
  hold(expected > kNearEnough ? "Left" : expected < -kNearEnough ? "Right" : "");
}

/// After a crash the position is no longer answered.
void PositionDriver::restart() {
  ++crashes_;
  hold("");
  player_.keys.tap("Space");
  player_.rest(500);
  player_.keys.tap("End", 300);
  player_.rest(500);
  player_.keys.tap("Up", 200);
  lastPosition_ = 50;
}

void PositionDriver::hold(const std::string& key) {
  if (key == held_) return;
  if (!held_.empty()) player_.keys.release(held_);
  if (!key.empty()) player_.keys.press(key);
  held_ = key;
}

}  // namespace vorn
