/// What `input/` owns: devices, what they last said, and the control maps.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/input_devices.h"

namespace vorn {

/// Values of `inputDevice`.
inline constexpr int kNoDevice = 0;
inline constexpr int kJoystick = 1;
inline constexpr int kKeyboard = 2;

struct InputState {
  // Keys pressed in the window, one at a time. Texts are Windows-1252.
  std::string
      lastKeyCode;  ///< decimal virtual-key code of the last key pressed; empty: none since the last clear
  std::string lastKeyChar;  ///< the lower-case character of that code
  std::string typedText;    ///< the line being typed
  int escapePressed = 0;    ///< 1 once Escape was pressed; whoever acts on it sets it back to 0

  int joystickPresent = 1;  ///< 1: a controller was found and set up
  int inputDevice = kNoDevice;

  // The controller as it stands.
  int joySteering = 0;  ///< -10000 (full left) .. 10000 (full right)
  int joyGasBrake = 0;  ///< -10000 (full gas) .. 10000 (full brake)
  int btnSpeedometer = 0;
  int btnTrackPosition = 0;
  int btnStartEngine = 0;
  int btnPitRoad = 0;
  int btnSayGear = 0;
  int btnSayLap = 0;
  int btnHorn = 0;
  int btnElapsedTime = 0;
  int btnUpShift = 0;
  int btnDownShift = 0;

  /// By button; not zero: it has had its effect, and counts as up until it has been released.
  std::array<std::uint8_t, 32> spentButtons{};

  // Catching a button or an axis for the joystick wizard.
  int joyCaptureMode = 0;    ///< 0 play, 1 a button, 2 the steering axis, 3 the gas axis
  int joyCapturedValue = 0;  ///< the button 0..31, or the axis 1 or 2
  int joyCaptured = 0;       ///< 0 until caught; then 1 for a button, or the axis

  // Joystick map: buttons 0..31, axes 1 (X, Y) or 2 (Rx, Ry).
  int joyMapSpeedometer = 0;
  int joyMapTrackPosition = 0;
  int joyMapStartEngine = 0;
  int joyMapPitRoad = 0;
  int joyMapSayGear = 0;
  int joyMapSayLap = 0;
  int joyMapHorn = 0;
  int joyMapElapsedTime = 0;
  int joyMapUpShift = 0;
  int joyMapDownShift = 0;
  int joySteeringAxis = 0;
  int joyGasAxis = 0;

  // Keyboard map: key codes 0..255.
  int keyMapSpeedometer = 0;
  int keyMapTrackPosition = 0;
  int keyMapStartEngine = 0;
  int keyMapSayLap = 0;
  int keyMapPitRoad = 0;
  int keyMapElapsedTime = 0;
  int keyMapSteerLeft = 0;
  int keyMapSteerRight = 0;
  int keyMapUpShift = 0;
  int keyMapDownShift = 0;
  int keyMapGas = 0;
  int keyMapBrake = 0;
  int keyMapEnter = 0;
  int keyMapHorn = 0;
  int keyMapSayGear = 0;

  // Devices.
  std::unique_ptr<KeyboardDevice> keyboardDevice;
  KeyboardState keyboardState{};  ///< the last reading, by key code; not zero: down
  std::vector<std::string> joystickList;
  std::unique_ptr<ControllerDevice> joystickDevice;
  int joystickEvent = 0;    ///< handle of the change notification; 0: none
  int joystickButtons = 0;  ///< how many buttons the controller has, 0 .. 32

  /// What reading damaged mapping files had to say before there was a voice.
  std::vector<std::string> startUpMessages;
};

}  // namespace vorn
