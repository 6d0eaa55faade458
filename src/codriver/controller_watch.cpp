#include "codriver/controller_watch.h"

#include <cstdlib>
#include <utility>

#include "input/events.h"
#include "speech/speech.h"
#include "state/key_names.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr int kWorthTelling = 4000;  // of 10000
constexpr int kPressed = 5000;

struct Axis {
  const char* name;
  int JoystickState::*value;
  const char* negative;
  const char* positive;
  int selector;  ///< of the axis in the game's map
  int InputState::*map;
  const char* purpose;          ///< where the map selects it
  const char* negativePurpose;  ///< more of it by side; null: nothing more
  const char* positivePurpose;
};

constexpr Axis kAxes[] = {
    {"axis X", &JoystickState::x, "left", "right", 1, &InputState::joySteeringAxis, "steering", nullptr,
     nullptr},
    {"axis Y", &JoystickState::y, "forward", "back", 1, &InputState::joyGasAxis, "", "gas", "brake"},
    {"axis R X", &JoystickState::rx, "left", "right", 2, &InputState::joySteeringAxis, "steering", nullptr,
     nullptr},
    {"axis R Y", &JoystickState::ry, "forward", "back", 2, &InputState::joyGasAxis, "", "gas", "brake"},
};

struct Button {
  int InputState::*map;
  const char* purpose;
};

constexpr Button kButtons[] = {
    {&InputState::joyMapSpeedometer, "speedometer and enter"},
    {&InputState::joyMapTrackPosition, "track position"},
    {&InputState::joyMapStartEngine, "start engine and fuel gauge"},
    {&InputState::joyMapPitRoad, "pit road"},
    {&InputState::joyMapSayGear, "say gear"},
    {&InputState::joyMapSayLap, "say lap"},
    {&InputState::joyMapHorn, "horn"},
    {&InputState::joyMapElapsedTime, "elapsed time"},
    {&InputState::joyMapUpShift, "shift up"},
    {&InputState::joyMapDownShift, "shift down"},
};
constexpr const char* kNothing = "nothing";

std::string purposeOf(const Axis& axis, int value, const InputState& maps) {
  if (maps.*axis.map != axis.selector) return kNothing;
  const char* const side = value < 0 ? axis.negativePurpose : axis.positivePurpose;
  return side != nullptr ? side : axis.purpose;
}

std::string purposeOf(int button, const InputState& maps) {
  std::string purposes;
  for (const Button& mapped : kButtons) {
    if (maps.*mapped.map != button) continue;
    purposes += (purposes.empty() ? "" : " and ") + std::string(mapped.purpose);
  }
  return purposes.empty() ? kNothing : purposes;
}

}  // namespace

std::vector<std::string> ControllerWatch::after(const JoystickState& reading, const InputState& maps) {
  std::vector<std::string> news;
  for (const Axis& axis : kAxes) {
    const int value = reading.*axis.value;
    if (std::abs(value - last_.*axis.value) < kWorthTelling) continue;
    last_.*axis.value = value;
    if (std::abs(value) < kWorthTelling) continue;  // on its way back
    news.push_back(" " + std::string(axis.name) + " " + (value < 0 ? axis.negative : axis.positive) + ", " +
                   purposeOf(axis, value, maps) + ". ");
    if (maps.*axis.map != axis.selector || axis.negativePurpose == nullptr) continue;
    hasGas_ = hasGas_ || value < -kPressed;
    hasBrake_ = hasBrake_ || value > kPressed;
    if (!hasGas_ || !hasBrake_ || std::exchange(isSharingTold_, true)) continue;
    news.push_back(" Gas and brake share " + std::string(axis.name) + ", as the game wants it. ");
  }
  for (std::size_t i = 0; i < reading.buttons.size(); ++i) {
    const bool isDown = reading.buttons[i] != 0;
    const bool wasDown = std::exchange(last_.buttons[i], reading.buttons[i]) != 0;
    if (!isDown || wasDown) continue;
    const int button = static_cast<int>(i);
    news.push_back(" button " + numberText(button) + ", " + purposeOf(button, maps) + ". ");
  }
  return news;
}

void testController(Cabin& cabin) {
  constexpr int kLookAgainMs = 30;
  GameState& g = cabin.game;
  if (!g.joystickDevice) {
    say2(g, " No controller is attached. ");
    return;
  }
  say2(g, " Move and press everything. Escape ends the test. ");
  JoystickState reading;
  const auto read = [&] {
    pollController(g);
    carryOn([&] { reading = g.joystickDevice->GetDeviceStateJoystick(); });
  };
  read();
  ControllerWatch watch(reading);
  for (g.lastKeyCode.clear(); g.lastKeyCode != key::kEscape;) {
    g.platform.yield(kLookAgainMs);
    read();
    for (const std::string& text : watch.after(reading, g)) {
      stopspeech(g);
      say2(g, text);
    }
  }
  g.escapePressed = 0;
  spendButtons(g);
  stopspeech(g);
  say2(g, " The test is over. ");
}

}  // namespace vorn
