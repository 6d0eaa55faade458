#include "input/wizards.h"

#include <algorithm>
#include <vector>

#include "clock/waits.h"
#include "input/control_maps.h"
#include "input/events.h"
#include "speech/speech.h"
#include "state/key_names.h"

namespace vorn {
namespace {

constexpr double kPauseAroundPrompt = 0.2;  // seconds
constexpr int kEnterKeyCode = 28;
constexpr int kLastKeyCode = 255;
constexpr int kNoKey = -1;
constexpr std::uint32_t kLongestEnterMs = 2000;

/// One question of the joystick wizard.
struct JoystickStep {
  int captureMode;
  const char* prompt;
  int InputState::*field;
  bool mayEndHere;  ///< Escape keeps what has been answered so far
  const char* confirmation = nullptr;
};

constexpr JoystickStep kJoystickSteps[] = {
    {kCaptureSteering,
     " Please turn the steering wheel to the left, "
     " or move the joystick to the left. "
     " the opposite of course will be to the right.",
     &InputState::joySteeringAxis, false},
    {kCaptureGas,
     " Please step on the gas peddle"
     " or push the joystick forward."
     " the opposite will be the brake.",
     &InputState::joyGasAxis, false, " ok "},
    {kCaptureButton,
     " Please press the button for your speedometer and"
     " enter key. I use the fin behind the steering wheel"
     " on the left hand side.",
     &InputState::joyMapSpeedometer, false},
    {kCaptureButton,
     " Please press the button for to have your track"
     " position spoken. I use the fin behind the steering wheel"
     " on the right hand side.",
     &InputState::joyMapTrackPosition, false},
    {kCaptureButton,
     " Please press the button for to start your engine"
     " and reed your fuel gauge during the race."
     " I use the upper left button on the steering wheel.",
     &InputState::joyMapStartEngine, false},
    {kCaptureButton,
     " Please press the button for to open pit road."
     " I use the upper right button on the steering wheel.",
     &InputState::joyMapPitRoad, false},
    {kCaptureButton,
     " Please press the button to shift up one gear."
     " I use, pulling the gear shift knob toward me.",
     &InputState::joyMapUpShift, false},
    {kCaptureButton,
     " Please press the button to down shift one gear."
     " I use, pushing the gear shift knob forward.",
     &InputState::joyMapDownShift, false},
    {kCaptureButton,
     " Please press the button for to say the gear."
     " I use the center button on the left hand side of the steering wheel.",
     &InputState::joyMapSayGear, true},
    {kCaptureButton,
     " Please press the button for to say the lap."
     " I use the center button on the right hand side of the steering wheel.",
     &InputState::joyMapSayLap, true},
    {kCaptureButton,
     " Please press the button for the horn."
     " I use the bottom button on the left hand side of the steering wheel.",
     &InputState::joyMapHorn, true},
    {kCaptureButton,
     "Please press the button to say the"
     " current elapse time of the race."
     " I use the bottom button on the right hand side of the steering wheel.",
     &InputState::joyMapElapsedTime, true},
};

/// One question of the keyboard wizard.
struct KeyStep {
  const char* prompt;
  int InputState::*field;
};

constexpr KeyStep kKeySteps[] = {
    {" Please press the key for your speedometer"
     " by default it is theright shift key.",
     &InputState::keyMapSpeedometer},
    {" Please press the key for to announce your track position. "
     " By default it is the right control key.",
     &InputState::keyMapTrackPosition},
    {" Please press the key for to start your engine and reed your fuel gauge."
     " By default it is the lower center key of the six pack above the arrow keys, the end key.",
     &InputState::keyMapStartEngine},
    {" Please press the key to say the lap."
     " By default it is the lower right key of the six pack above the arrow keys, the page down key.",
     &InputState::keyMapSayLap},
    {" Please press the key for to open pit road."
     " By default it is the Upper center key of the six pack above the arrow keys, the home key.",
     &InputState::keyMapPitRoad},
    {" please press the key to say current elapse race time."
     " By default it is the Lower left key of the six pack above the arrow keys, the delete key.",
     &InputState::keyMapElapsedTime},
    {" Please press the key to turn left."
     " By default it is the left arrow key.",
     &InputState::keyMapSteerLeft},
    {" Please press the key to turn right."
     " By default it is the right arrow key.",
     &InputState::keyMapSteerRight},
    {" Please press the key to shift up one gear."
     " By default it is the up arrow key.",
     &InputState::keyMapUpShift},
    {" Please press the key to shift down one gear."
     " By default it is the down arrow key.",
     &InputState::keyMapDownShift},
    {" Please press the key for the gas peddle."
     " By default it is the left control key.",
     &InputState::keyMapGas},
    {" Please press the key for the brake peddle."
     " By default it is the left shift key.",
     &InputState::keyMapBrake},
    {" Please press the key for to play the horn."
     " By default it is the Upper left key of the six pack above the arrow keys, the insert key.",
     &InputState::keyMapHorn},
    {" Please press the key for to say gear."
     " by default it is the Upper right key of the six pack above the arrow keys, the page up key.",
     &InputState::keyMapSayGear},
};

bool contains(const std::vector<int>& values, int value) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

/// Asks until a control is moved, or a key pressed: then `lastKeyCode` tells which.
void captureControl(GameState& g, const JoystickStep& step) {
  clk(g);
  dyke(g, kPauseAroundPrompt);
  say2(g, step.prompt);
  dyke(g, kPauseAroundPrompt);
  g.joyCapturedValue = 0;
  g.joyCaptured = 0;
  g.joyCaptureMode = step.captureMode;
  do {
    pollController(g);
    g.platform.yield();
  } while (g.joyCaptured == 0 && g.lastKeyCode.empty());
  stopspeech(g);
}

/// Asks until it is answered; `usedButtons` grows. Returns false on Escape.
bool answerStep(GameState& g, const JoystickStep& step, std::vector<int>& usedButtons) {
  for (;;) {
    captureControl(g, step);
    if (g.lastKeyCode == key::kEscape) return false;
    if (!g.lastKeyCode.empty()) continue;
    if (step.captureMode == kCaptureButton) {
      if (contains(usedButtons, g.joyCapturedValue)) {
        smbd(g);
        continue;
      }
      usedButtons.push_back(g.joyCapturedValue);
    }
    g.*step.field = g.joyCapturedValue;
    if (step.confirmation) say(g, step.confirmation);
    return true;
  }
}

/// Returns whether enough has been answered to play.
bool answerSteps(GameState& g) {
  std::vector<int> usedButtons;
  for (const JoystickStep& step : kJoystickSteps) {
    if (!answerStep(g, step, usedButtons)) return step.mayEndHere;
  }
  return true;
}

/// Buttons have changed unseen while they were captured; those still down must
/// not choose anything in the menu.
void endCapturing(InputState& in) {
  in.joyCaptureMode = kCaptureNothing;
  readController(in);
  spendButtons(in);
}

/// The key that chose the wizard is still down when it opens, and would be its first answer.
void waitForEnterToBeReleased(GameState& g) {
  const std::int32_t start = g.platform.tickCount();
  do {
    readKeyboard(g);
    g.platform.yield();
  } while (isKeyDown(g, kEnterKeyCode) && millisecondsSince(g, start) < kLongestEnterMs);
}

/// One look at every key; of several down the highest code counts. The yields do
/// not wait, so that on a real keyboard a short tap is not missed.
int scanKeys(GameState& g) {
  int captured = kNoKey;
  for (int code = 1; code <= kLastKeyCode; ++code) {
    readKeyboard(g);
    g.platform.yield(0);
    if (isKeyDown(g, code)) captured = code;
  }
  return captured;
}

int captureKey(GameState& g, const char* prompt) {
  stopspeech(g);
  clk(g);
  say2(g, prompt);
  int captured = kNoKey;
  while (captured == kNoKey) captured = scanKeys(g);
  return captured;
}

}  // namespace

void confjoy(GameState& g) {
  if (g.joystickPresent == 0) {
    say(g, " Sorry, no joy stick was found. ");
    return;
  }
  if (answerSteps(g)) {
    clk(g);
    say(g, " OK, thank you. ");
    endCapturing(g);
    printJoyCFG(g);
  } else {
    endCapturing(g);
    clk(g);
    say(g,
        " I'm sorry, but you have not configured enough of"
        " the joystick to be able to play the game."
        " I am resetting the joystick back to the default settings.");
    ReSetJoy(g);
  }
}

void confkey(GameState& g) {
  clk(g);
  stopspeech(g);
  waitForEnterToBeReleased(g);
  std::vector<int> usedKeys;
  for (const KeyStep& step : kKeySteps) {
    int code = captureKey(g, step.prompt);
    while (code == kEnterKeyCode || contains(usedKeys, code)) {
      bk(g);
      code = captureKey(g, step.prompt);
    }
    usedKeys.push_back(code);
    g.*step.field = code;
    say(g, " ok ");
  }
  printKeyCFG(g);
}

}  // namespace vorn
