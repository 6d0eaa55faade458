#include "input/events.h"

#include <algorithm>
#include <utility>

#include "speech/speech.h"
#include "state/key_names.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr int kKeyboardFormat = 1;
constexpr int kJoystickFormat = 3;
constexpr int kAxisRange = 10000;
constexpr int kDeadZoneDivisor = 25;
constexpr double kSaturationFactor = 0.5;
constexpr int kCaptureThreshold = -99;  // beyond it an axis counts as moved

/// Which flag each mapped button feeds.
constexpr std::pair<int InputState::*, int InputState::*> kActions[] = {
    {&InputState::btnSpeedometer, &InputState::joyMapSpeedometer},
    {&InputState::btnTrackPosition, &InputState::joyMapTrackPosition},
    {&InputState::btnStartEngine, &InputState::joyMapStartEngine},
    {&InputState::btnPitRoad, &InputState::joyMapPitRoad},
    {&InputState::btnSayGear, &InputState::joyMapSayGear},
    {&InputState::btnSayLap, &InputState::joyMapSayLap},
    {&InputState::btnHorn, &InputState::joyMapHorn},
    {&InputState::btnElapsedTime, &InputState::joyMapElapsedTime},
    {&InputState::btnUpShift, &InputState::joyMapUpShift},
    {&InputState::btnDownShift, &InputState::joyMapDownShift},
};

bool isButtonDown(const JoystickState& state, int button) {
  return button >= 0 && button < static_cast<int>(state.buttons.size()) && state.buttons[button] != 0;
}

void play(InputState& in, const JoystickState& state) {
  if (in.joySteeringAxis == 1) in.joySteering = state.x;
  if (in.joySteeringAxis == 2) in.joySteering = state.rx;
  if (in.joyGasAxis == 1) in.joyGasBrake = state.y;
  if (in.joyGasAxis == 2) in.joyGasBrake = state.ry;
  for (std::size_t i = 0; i < in.spentButtons.size(); ++i) {
    if (!isButtonDown(state, static_cast<int>(i))) in.spentButtons[i] = 0;
  }
  for (const auto& [flag, button] : kActions) {
    in.*flag = isButtonDown(state, in.*button) && in.spentButtons[in.*button] == 0 ? 1 : 0;
  }
}

/// The highest button that is down wins.
void captureButton(InputState& in, const JoystickState& state) {
  for (int i = 0; i < std::min(in.joystickButtons, 32); ++i) {
    if (isButtonDown(state, i)) {
      in.joyCapturedValue = i;
      in.joyCaptured = 1;
    }
  }
}

void captureAxis(InputState& in, int first, int second) {
  const int axis = first < kCaptureThreshold ? 1 : second < kCaptureThreshold ? 2 : 0;
  if (axis == 0) return;
  in.joyCapturedValue = axis;
  in.joyCaptured = axis;
}

/// Windows-1252 letters beyond ASCII that have another case.
char changeCase(char c, bool toLower) {
  static constexpr std::pair<unsigned char, unsigned char> kPairs[] = {
      {0x8A, 0x9A}, {0x8C, 0x9C}, {0x8E, 0x9E}, {0x9F, 0xFF}};
  const auto code = static_cast<unsigned char>(c);
  for (const auto& [upper, lower] : kPairs) {
    if (code == (toLower ? upper : lower)) return static_cast<char>(toLower ? lower : upper);
  }
  const auto inBlock = [&](unsigned first, unsigned last) { return code >= first && code <= last; };
  if (toLower) {
    const bool hasLower = inBlock('A', 'Z') || (inBlock(0xC0, 0xDE) && code != 0xD7);
    return hasLower ? static_cast<char>(code + 0x20) : c;
  }
  const bool hasUpper = inBlock('a', 'z') || (inBlock(0xE0, 0xFE) && code != 0xF7);
  return hasUpper ? static_cast<char>(code - 0x20) : c;
}

}  // namespace

void GameEvents::Form_KeyDown(int virtualKeyCode, int /*shiftState*/) {
  g_.lastKeyCode = std::to_string(virtualKeyCode);
  g_.lastKeyChar = std::string(1, changeCase(static_cast<char>(virtualKeyCode), true));
  if (g_.lastKeyCode == key::kEscape) g_.escapePressed = 1;
}

void GameEvents::DirectXEvent8_DXCallback(int /*eventId*/) {
  readController(g_);
}

void setUpKeyboard(GameState& g) {
  carryOn([&] { g.keyboardDevice = g.platform.createKeyboardDevice(); });
  if (!g.keyboardDevice) return;
  carryOn([&] { g.keyboardDevice->SetCommonDataFormat(kKeyboardFormat); });
  carryOn([&] { g.keyboardDevice->SetCooperativeLevel(kBackgroundNonExclusive); });
  carryOn([&] { g.keyboardDevice->Acquire(); });
}

void detectController(GameState& g) {
  if (!carryOn([&] { g.joystickList = g.platform.attachedControllers(); })) g.joystickPresent = 0;
  if (g.joystickList.empty()) g.joystickPresent = 0;
  if (g.joystickPresent == 1) SetUpJoystick(g);
  if (g.joystickPresent == 0) g.inputDevice = kKeyboard;
}

void SetUpJoystick(GameState& g) {
  if (g.joystickDevice) carryOn([&] { g.joystickDevice->Unacquire(); });
  g.joystickDevice.reset();
  carryOn([&] { g.joystickDevice = g.platform.createControllerDevice(g.joystickList.at(0)); });
  if (!g.joystickDevice) return;
  carryOn([&] { g.joystickDevice->SetCommonDataFormat(kJoystickFormat); });
  carryOn([&] { g.joystickDevice->SetCooperativeLevel(kBackgroundNonExclusive); });
  g.joystickEvent = 1;
  carryOn([&] { g.joystickDevice->SetEventNotification(g.joystickEvent); });
  carryOn([&] { SetJoystickRange(g, -kAxisRange, kAxisRange); });
  carryOn([&] { g.joystickDevice->Acquire(); });
  readController(g);
  carryOn([&] { g.joystickButtons = g.joystickDevice->buttonCount(); });
}

void SetJoystickRange(InputState& in, int minimum, int maximum) {
  ControllerDevice& device = *in.joystickDevice;
  device.SetRange(minimum, maximum);
  const double width = static_cast<double>(maximum) - minimum;
  const int deadZone = roundToInt(width / kDeadZoneDivisor);
  device.SetAxisProperty(AxisProperty::kDeadZone, kObjectX, deadZone);
  device.SetAxisProperty(AxisProperty::kDeadZone, kObjectY, deadZone);
  const int saturation = roundToInt(width * kSaturationFactor);
  device.SetAxisProperty(AxisProperty::kSaturation, kObjectX, saturation);
  device.SetAxisProperty(AxisProperty::kSaturation, kObjectY, saturation);
}

void readController(InputState& in) {
  if (!in.joystickDevice) return;
  JoystickState state;
  try {
    state = in.joystickDevice->GetDeviceStateJoystick();
  } catch (const InputLost&) {
    carryOn([&] { in.joystickDevice->Acquire(); });
    return;
  } catch (const PlatformError&) {
    return;
  }
  if (in.joyCaptureMode <= kCaptureNothing) {
    play(in, state);
  } else if (in.joyCaptureMode == kCaptureButton) {
    captureButton(in, state);
  } else if (in.joyCaptureMode == kCaptureSteering) {
    captureAxis(in, state.x, state.rx);
  } else {
    captureAxis(in, state.y, state.ry);
  }
}

void spendButton(InputState& in, int InputState::*flag) {
  if (in.*flag != 1) return;
  in.*flag = 0;
  for (const auto& [action, button] : kActions) {
    if (action == flag) in.spentButtons.at(in.*button) = 1;
  }
}

void spendButtons(InputState& in) {
  for (const auto& [flag, button] : kActions) spendButton(in, flag);
}

void pollController(InputState& in) {
  if (in.joystickDevice) in.joystickDevice->Poll();
}

void readKeyboard(InputState& in) {
  if (in.keyboardDevice) in.keyboardState = in.keyboardDevice->GetDeviceStateKeyboard();
}

void readRaceDevice(InputState& in) {
  if (in.inputDevice == kJoystick) {
    pollController(in);
  } else {
    readKeyboard(in);
  }
}

bool isKeyDown(const InputState& in, int keyCode) {
  if (keyCode < 0 || keyCode >= static_cast<int>(in.keyboardState.size())) {
    throw PlatformError("keyboardState", std::to_string(keyCode), "there is no such key code");
  }
  return in.keyboardState[keyCode] != 0;
}

void clk(GameState& g) {
  // No waiting in these yields: a key that comes in the first one keeps its code
  // but loses its character, so the moment should be short.
  g.lastKeyCode.clear();
  g.platform.yield(0);
  g.lastKeyChar.clear();
  g.platform.yield(0);
  if (g.inputDevice == kJoystick) {
    pollController(g);
    g.btnSpeedometer = 0;  // a button still held is not a new answer
  }
  readKeyboard(g);
  g.platform.yield(0);
}

void getkey(GameState& g) {
  constexpr int kRestMs = 30;  // at most: a key comes through at once
  clk(g);
  do {
    g.platform.yield(kRestMs);
  } while (g.lastKeyCode.empty());
  stopspeech(g);
}

void getter(GameState& g, const std::string& prompt) {
  clk(g);
  g.platform.yield();
  for (;;) {
    clk(g);
    g.platform.yield();
    say2(g, prompt);
    g.typedText.clear();
    bool shiftPending = false;
    for (;;) {
      getkey(g);
      if (g.lastKeyCode == key::kF1) break;
      if (g.lastKeyCode == key::kShift) {
        shiftPending = true;
        continue;
      }
      if (shiftPending && !g.lastKeyChar.empty()) g.lastKeyChar[0] = changeCase(g.lastKeyChar[0], false);
      shiftPending = false;
      if (g.lastKeyCode == key::kEnter) return;
      if (g.lastKeyCode == key::kBackspace) {
        if (g.typedText.empty()) continue;
        g.lastKeyChar = g.typedText.back();
        saykey(g);
        g.typedText.pop_back();
      } else {
        saykey(g);
        g.typedText += g.lastKeyChar;
      }
    }
  }
}

}  // namespace vorn
