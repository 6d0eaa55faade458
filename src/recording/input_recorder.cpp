#include "recording/input_recorder.h"

#include <algorithm>
#include <string>

namespace vorn {
namespace {

std::vector<const Key*> keysOf(int virtualKeyCode) {
  std::vector<const Key*> keys;
  for (const Key& key : allKeys()) {
    if (key.virtualKeyCode == virtualKeyCode) keys.push_back(&key);
  }
  return keys;
}

bool isDown(const KeyboardState& state, const Key& key) {
  return state[static_cast<std::size_t>(key.keyCode)] != 0;
}

std::string statement(const char* what, const Key& key) {
  return what + std::string(key.name);
}

}  // namespace

void InputRecorder::keyWentDown(int virtualKeyCode) {
  const auto keys = keysOf(virtualKeyCode);
  if (keys.size() == 1) {
    settle();
    press(*keys.front(), writer_.now());
  } else if (!keys.empty()) {
    unsettled_.push_back({keys, writer_.now()});
  }
}

// A key that was let go was so at some time since the last reading: best at a moment that a replay knows
// well. One that the game never saw down was a tap, and long over.
void InputRecorder::keyboardRead(const KeyboardState& state) {
  settle(state);
  const std::int64_t at = std::min(std::max(lastRead_ + 1, writer_.latestMilestone()), writer_.now());
  lastRead_ = writer_.now();
  for (const Key& key : allKeys()) {
    const bool wasDown = down_.count(&key) > 0;
    if (isDown(state, key)) {
      if (!wasDown) pressUnheard(key, at);
      seenDown_.insert(&key);
    } else if (wasDown) {
      writer_.put(statement("release ", key), seenDown_.erase(&key) > 0 ? at : 0);
      down_.erase(&key);
    }
  }
}

void InputRecorder::controllerRead(const JoystickState& state) {
  settle();
  move("X", controller_.x, state.x);
  move("Y", controller_.y, state.y);
  move("Rx", controller_.rx, state.rx);
  move("Ry", controller_.ry, state.ry);
  for (std::size_t button = 0; button < state.buttons.size(); ++button) {
    const bool isHeld = state.buttons[button] != 0;
    if (isHeld == (controller_.buttons[button] != 0)) continue;
    writer_.put("button " + std::to_string(button) + (isHeld ? " down" : " up"), writer_.now());
    controller_.buttons[button] = state.buttons[button];
  }
}

void InputRecorder::settle() {
  settle(KeyboardState{});
}

void InputRecorder::settle(const KeyboardState& state) {
  for (const Unsettled& event : unsettled_) {
    const auto pressed = std::find_if(event.keys.begin(), event.keys.end(), [&](const Key* key) {
      return isDown(state, *key) && down_.count(key) == 0;
    });
    press(pressed == event.keys.end() ? *event.keys.front() : **pressed, event.yield);
  }
  unsettled_.clear();
}

void InputRecorder::press(const Key& key, std::int64_t yield) {
  const bool wasDown = !down_.insert(&key).second;
  seenDown_.erase(&key);
  if (wasDown) writer_.put(statement("release ", key), yield);  // unseen
  writer_.put(statement("press ", key), yield);
}

// Without its event, as where the keyboard's layout has another key there.
void InputRecorder::pressUnheard(const Key& key, std::int64_t yield) {
  writer_.put("focus off", yield);
  press(key, yield);
  writer_.put("focus on", yield);
}

void InputRecorder::move(const char* axis, int& place, int value) {
  if (place == value) return;
  place = value;
  writer_.put(std::string("axis ") + axis + ' ' + std::to_string(value), writer_.now());
}

}  // namespace vorn
