#include "platform/headless/script_runner.h"

#include <utility>

namespace vorn {
namespace {

constexpr int kBadLine = 2;
constexpr int kLimitPassed = 4;

/// Which of Shift, Ctrl and Alt are down, as a window reports it: 1, 2 and 4.
int shiftState(const KeyboardState& keyboard) {
  const auto isDown = [&](const char* name) {
    return keyboard[static_cast<std::size_t>(keyByName(name)->keyCode)] != 0;
  };
  return (isDown("LeftShift") || isDown("RightShift") ? 1 : 0) +
         (isDown("LeftCtrl") || isDown("RightCtrl") ? 2 : 0) +
         (isDown("LeftAlt") || isDown("RightAlt") ? 4 : 0);
}

int& axisOf(JoystickState& reading, step::Axis axis) {
  switch (axis) {
    case step::Axis::kX:
      return reading.x;
    case step::Axis::kY:
      return reading.y;
    case step::Axis::kRx:
      return reading.rx;
    case step::Axis::kRy:
      break;
  }
  return reading.ry;
}

/// Gives `place` its new value. Returns whether that is another one.
template <typename Value>
bool change(Value& place, Value value) {
  return std::exchange(place, value) != value;
}

std::string describe(const step::Pause& pause) {
  return std::to_string(pause.milliseconds) + " ms to pass";
}

std::string describe(const step::AwaitTicks& await) {
  return std::to_string(await.count) + " car ticks";
}

std::string describe(const step::AwaitText& await) {
  return "a text with \"" + await.text + "\"";
}

std::string describe(const step::AwaitQuiet&) {
  return "the voice to be idle";
}

}  // namespace

void ScriptRunner::carryOn() {
  try {
    do {
      if (!finishSteps()) return;
    } while (readStatement());
  } catch (const ScriptError& error) {
    endWith(kBadLine, error.what());
  }
}

bool ScriptRunner::finishSteps() {
  while (next_ != steps_.size()) {
    if (const auto* wait = std::get_if<Wait>(&steps_[next_])) {
      if (!std::visit([this](const auto& await) { return isOver(await); }, *wait)) {
        if (hasPassedLimit()) {
          endAtLimit(std::visit([](const auto& await) { return describe(await); }, *wait));
        }
        return false;
      }
      beginStep(next_ + 1);
    } else {
      const Action action = std::get<Action>(steps_[next_]);
      beginStep(next_ + 1);  // first, since an action may leave by an exception
      std::visit([this](const auto& taken) { carryOut(taken); }, action);
    }
  }
  return true;
}

void ScriptRunner::beginStep(std::size_t step) {
  next_ = step;
  stepBegan_ = world_.clock.now();
  ticksAtStep_ = world_.carTicks;
}

bool ScriptRunner::readStatement() {
  if (hasEnded_) {
    if (hasPassedLimit()) endAtLimit("the program to end");
    return false;
  }
  world_.trace.flush();
  if (world_.render != nullptr) world_.render->flush();
  std::optional<std::string> line = source_ == nullptr ? std::nullopt : source_->nextLine();
  if (!line) {
    if (!hasClosed_) throw ProgramEnd{0};
    hasEnded_ = true;  // a window that was closed shuts down in order
    return false;
  }
  ++lineNumber_;
  steps_ = parseLine(*line);
  lineBegan_ = world_.clock.now();
  beginStep(0);
  return true;
}

bool ScriptRunner::hasPassedLimit() const {
  return world_.clock.now() - lineBegan_ >= world_.options.limitMs;
}

void ScriptRunner::endAtLimit(const std::string& awaited) const {
  endWith(kLimitPassed, "waited " + std::to_string(world_.options.limitMs) + " ms for " + awaited);
}

void ScriptRunner::endWith(int exitStatus, const std::string& reason) const {
  diagnostics_ << source_->name() << ':' << lineNumber_ << ": " << reason << std::endl;
  throw ProgramEnd{exitStatus};
}

bool ScriptRunner::isOver(const step::Pause& pause) {
  return world_.clock.now() - stepBegan_ >= pause.milliseconds;
}

bool ScriptRunner::isOver(const step::AwaitTicks& await) {
  return world_.carTicks - ticksAtStep_ >= await.count ||
         (await.orMilliseconds && world_.clock.now() - stepBegan_ >= *await.orMilliseconds);
}

bool ScriptRunner::isOver(const step::AwaitText& await) {
  while (!world_.requestedTexts.empty()) {
    const bool isAwaited = world_.requestedTexts.front().find(await.text) != std::string::npos;
    world_.requestedTexts.pop_front();
    if (isAwaited) return true;
  }
  return false;
}

bool ScriptRunner::isOver(const step::AwaitQuiet&) {
  return world_.speech.isIdle();
}

void ScriptRunner::carryOut(const step::MoveKey& move) {
  std::uint8_t& state = world_.keyboard[static_cast<std::size_t>(move.key->keyCode)];
  const bool isPress = move.isDown && state == 0;
  const bool isRelease = !move.isDown && state != 0;
  state = move.isDown ? KeyLatch::kKeyIsDown : 0;
  if (isPress) world_.taps.wentDown(move.key->keyCode);
  if (isRelease) world_.taps.wentUp(move.key->keyCode, static_cast<std::uint32_t>(world_.clock.now()));
  world_.trace.input("key", move.key->name, move.isDown ? 1 : 0);
  if (isPress && world_.hasFocus && world_.receiver != nullptr) {
    world_.receiver->Form_KeyDown(move.key->virtualKeyCode, shiftState(world_.keyboard));
  }
}

void ScriptRunner::carryOut(const step::MoveAxis& move) {
  ControllerState& moved = controller();
  moved.hasChanged |= change(axisOf(moved.reading, move.axis), move.value);
  world_.trace.input("axis", axisName(move.axis), move.value);
}

void ScriptRunner::carryOut(const step::MoveButton& move) {
  ControllerState& moved = controller();
  const std::uint8_t state = move.isDown ? KeyLatch::kKeyIsDown : 0;
  moved.hasChanged |= change(moved.reading.buttons[static_cast<std::size_t>(move.number)], state);
  world_.trace.input("button", std::to_string(move.number), move.isDown ? 1 : 0);
}

void ScriptRunner::carryOut(const step::LoseController&) {
  controller().isLost = true;
  world_.trace.input("lost");
}

void ScriptRunner::carryOut(const step::MoveFocus& move) {
  world_.hasFocus = move.isOn;
  if (world_.render != nullptr) world_.render->mixer().setMuted(!move.isOn);
  world_.trace.input("focus", nullptr, move.isOn ? 1 : 0);
}

void ScriptRunner::carryOut(const step::GetField& get) {
  const auto value = world_.fields.get ? world_.fields.get(get.name) : std::nullopt;
  if (!value) throw ScriptError("there is no such field: " + get.name);
  world_.trace.value(get.name, *value);
}

void ScriptRunner::carryOut(const step::SetField& set) {
  if (!world_.fields.set || !world_.fields.set(set.name, set.value)) {
    throw ScriptError("there is no such numeric field, or it cannot hold the value: " + set.name);
  }
}

void ScriptRunner::carryOut(const step::Echo& echo) {
  world_.trace.echo(echo.text);
}

void ScriptRunner::carryOut(const step::CloseWindow&) {
  world_.trace.input("close");
  hasClosed_ = true;
  closeRequests_.ask();
}

void ScriptRunner::carryOut(const step::EndSession&) {
  throw ProgramEnd{0};
}

ControllerState& ScriptRunner::controller() const {
  if (!world_.options.controller) throw ScriptError("no controller is attached");
  return world_.controller;
}

}  // namespace vorn
