/// Devices and events: the keyboard and the first game controller, what they leave
/// in the state, and the waits for a key.
#pragma once

#include <string>

#include "state/game_state.h"

namespace vorn {

/// Values of `joyCaptureMode`; in any but the first the controller drives nothing.
inline constexpr int kCaptureNothing = 0;
inline constexpr int kCaptureButton = 1;
inline constexpr int kCaptureSteering = 2;
inline constexpr int kCaptureGas = 3;

/// Delivers what the platform reports into the state. Lives as long as the game runs.
class GameEvents : public EventReceiver {
 public:
  explicit GameEvents(GameState& g) : g_(g) {}
  void Form_KeyDown(int virtualKeyCode, int shiftState) override;
  void DirectXEvent8_DXCallback(int eventId) override;

 private:
  GameState& g_;
};

/// Opens the system keyboard; a failing step is skipped. Does not wait.
void setUpKeyboard(GameState& g);
/// Looks for a controller and sets it up; without one the keyboard is chosen. Does not wait.
void detectController(GameState& g);
/// Opens and prepares the first attached controller; a failing step is skipped. Does not wait.
void SetUpJoystick(GameState& g);
/// Axis range, dead zone and saturation of the controller (`minimum` .. `maximum`).
void SetJoystickRange(InputState& in, int minimum, int maximum);
/// Reads the controller into the axis and button fields, or into the capture that is going on.
void readController(InputState& in);

/// The press that has raised `flag` (a `btn...` field) has had its effect: its
/// button counts as up until it has been released.
void spendButton(InputState& in, int InputState::*flag);
/// The same for every mapped button that is down.
void spendButtons(InputState& in);

/// Asks the controller for its state, where there is one.
void pollController(InputState& in);
/// Reads the whole keyboard into `keyboardState`.
void readKeyboard(InputState& in);
/// Polls the controller or reads the keyboard, as `inputDevice` decides.
void readRaceDevice(InputState& in);
/// Whether the key with this key code is down in `keyboardState`.
bool isKeyDown(const InputState& in, int keyCode);

/// Forgets pending key input and refreshes both devices; yields three times.
void clk(GameState& g);
/// Forgets pending input, waits for one key press, then silences the voice.
void getkey(GameState& g);
/// The spoken line editor: asks `prompt`, leaves the line in `typedText`. F1 asks again.
void getter(GameState& g, const std::string& prompt);

}  // namespace vorn
