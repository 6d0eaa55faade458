#include "input/control_maps.h"

#include <limits>
#include <span>

#include "input/events.h"
#include "input/settings_reading.h"
#include "speech/losses.h"
#include "speech/speech.h"
#include "text/numbers.h"
#include "text/settings_file.h"

namespace vorn {
namespace {

struct MappedControl {
  int InputState::*field;
  int standard;         ///< the default
  int lowest, highest;  ///< what a file may hold
};

constexpr int kAny = 1 << 30;

constexpr MappedControl button(int InputState::*field, int standard) {
  return {field, standard, 0, 31};
}
constexpr MappedControl axis(int InputState::*field) {
  return {field, 1, -kAny, kAny};  // another selector than 1 or 2 freezes the axis
}
constexpr MappedControl keyCode(int InputState::*field, int standard) {
  return {field, standard, 0, 255};
}

constexpr MappedControl kJoystick12[] = {
    button(&InputState::joyMapSpeedometer, 0), button(&InputState::joyMapTrackPosition, 1),
    button(&InputState::joyMapStartEngine, 2), button(&InputState::joyMapPitRoad, 3),
    button(&InputState::joyMapSayGear, 4),     button(&InputState::joyMapSayLap, 5),
    button(&InputState::joyMapHorn, 6),        button(&InputState::joyMapElapsedTime, 7),
    button(&InputState::joyMapUpShift, 8),     button(&InputState::joyMapDownShift, 9),
    axis(&InputState::joySteeringAxis),        axis(&InputState::joyGasAxis),
};

constexpr MappedControl kKeyboard15[] = {
    keyCode(&InputState::keyMapSpeedometer, 54),     // right Shift
    keyCode(&InputState::keyMapTrackPosition, 157),  // right Ctrl
    keyCode(&InputState::keyMapStartEngine, 207),    // End
    keyCode(&InputState::keyMapSayLap, 209),         // Page Down
    keyCode(&InputState::keyMapPitRoad, 199),        // Home
    keyCode(&InputState::keyMapElapsedTime, 211),    // Delete
    keyCode(&InputState::keyMapSteerLeft, 203),      // Left
    keyCode(&InputState::keyMapSteerRight, 205),     // Right
    keyCode(&InputState::keyMapUpShift, 200),        // Up
    keyCode(&InputState::keyMapDownShift, 208),      // Down
    keyCode(&InputState::keyMapGas, 29),             // left Ctrl
    keyCode(&InputState::keyMapBrake, 42),           // left Shift
    keyCode(&InputState::keyMapEnter, 28),           // Enter
    keyCode(&InputState::keyMapHorn, 210),           // Insert
    keyCode(&InputState::keyMapSayGear, 201),        // Page Up
};

struct MapFile {
  const char* name;
  std::span<const MappedControl> controls;
  const char* resetMessage;
};

const MapFile kJoystickFile{"vorn1joy.cfg", kJoystick12,
                            " The joystick has been reset back to default settings."};
const MapFile kKeyboardFile{"vorn1key.cfg", kKeyboard15,
                            " The key board has been set back to the default settings. "};

void setDefaults(InputState& in, const MapFile& map) {
  for (const MappedControl& control : map.controls) in.*control.field = control.standard;
}

void print(GameState& g, const MapFile& map) {
  std::vector<int> values;
  for (const MappedControl& control : map.controls) values.push_back(g.*control.field);
  keep(g, Kept::kSettings, [&] { g.platform.files().write(map.name, settingsText(values)); });
}

void resetSilently(GameState& g, const MapFile& map) {
  setDefaults(g, map);
  print(g, map);
}

bool load(InputState& in, const MapFile& map, const std::string& text) {
  const auto values = readSettings(text);
  if (values.size() < map.controls.size()) return false;
  for (std::size_t i = 0; i < map.controls.size(); ++i) {
    const MappedControl& control = map.controls[i];
    const double value = roundEven(values[i].value_or(std::numeric_limits<double>::quiet_NaN()));
    if (!(value >= control.lowest && value <= control.highest)) return false;
    in.*control.field = static_cast<int>(value);
  }
  return true;
}

void loadOrReset(GameState& g, const MapFile& map) {
  const auto text = settingsFileText(g, map.name);
  if (!text || load(g, map, *text)) return;
  resetSilently(g, map);
  g.startUpMessages.push_back(map.resetMessage);
}

/// The heading and its lines, each line preceded by one blank.
std::string joined(const std::string& heading, std::span<const char* const> lines) {
  std::string text = heading;
  for (const char* line : lines) text += std::string(" ") + line;
  return text;
}

constexpr const char* kJoystickLines[] = {
    "button 0 or the fin behind the steering wheel on the left hand side = speedometer and enter key.",
    "button 1 or the fin behind the steering wheel on the right hand side = track position.",
    "button 2 or the upper left hand button on the steering wheel = start your engine and fuel gauge.",
    "button 3 or the upper right hand button on the steering wheel = open pit road.",
    "button 4 or the center button on the left hand side of the steering wheel = say gear.",
    "button 5 or the center button on the right hand side of the steering wheel = say lap.",
    "button 6 or the bottom button on the left hand side of the steering wheel = horn.",
    ("button 7 or the bottom button on the right hand side of the steering wheel = say current elapse race "
     "time."),
    "button 8 or pulling the gear shift knob towards you = up shift one gear.",
    "button 9 or pushing the gear shift knob away from you = down shift one gear.",
    "joystick axis x moving the joystick or steering wheel left or right = steering.",
    "joystick axis y moving the joystick forward or back or gas and brake peddle = gas or brake peddle.",
};

constexpr const char* kKeyboardLines[] = {
    "right shift key = speedometer.",
    "right control key = track position.",
    "Upper left key of the six pack above the arrow keys, the insert key = horn.",
    "Upper center key of the six pack above the arrow keys, the home key = open pit road.",
    "Upper right key of the six pack above the arrow keys, the page up key = say gear.",
    "Lower left key of the six pack above the arrow keys, the delete key = say current elapse race time.",
    "lower center key of the six pack above the arrow keys, the end key = start engine and fuel gauge.",
    "lower right key of the six pack above the arrow keys, the page down key = say lap.",
    "left arrow key = steering left.",
    "right arrow key = steering right.",
    "up arrow key = up shift one gear.",
    "down arrow key = down shift one gear.",
    "left control key = gas peddle.",
    "left shift key = brake peddle.",
};

}  // namespace

void jhk(GameState& g) {
  setDefaults(g, kJoystickFile);
  setDefaults(g, kKeyboardFile);
}

void getJoyCFG(GameState& g) {
  loadOrReset(g, kJoystickFile);
}

void getKeyCFG(GameState& g) {
  loadOrReset(g, kKeyboardFile);
}

void printJoyCFG(GameState& g) {
  print(g, kJoystickFile);
}

void printKeyCFG(GameState& g) {
  print(g, kKeyboardFile);
}

void ReSetJoy(GameState& g) {
  resetSilently(g, kJoystickFile);
  say(g, kJoystickFile.resetMessage);
}

void resetkey(GameState& g) {
  resetSilently(g, kKeyboardFile);
  say(g, kKeyboardFile.resetMessage);
}

void readjoy(GameState& g) {
  clk(g);
  stopspeech(g);
  say2(g, joined("Default joystick configuration.", kJoystickLines));
}

void readKB(GameState& g) {
  stopspeech(g);
  clk(g);
  say2(g, joined("Default keyboard configuration.", kKeyboardLines));
}

}  // namespace vorn
