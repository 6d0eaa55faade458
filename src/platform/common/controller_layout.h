/// What the axes and buttons of a game controller are taken for: by a table of vendor
/// and product where the model is known, else by what it looks like. Pure.
#pragma once

#include <string>
#include <vector>

namespace vorn {

/// What the system takes a controller for.
enum class ControllerKind { kUnknown, kGamepad, kWheel, kFlightStick, kThrottle };

/// What is known of a controller before any of it has been moved. A gamepad is one
/// whose controls the system knows by their places: its axes and buttons are numbered
/// by `PadAxis` and `PadButton`. Those of all others have the numbers of the device:
/// axes are counted as they come in X, Y, Z, Rx, Ry, Rz, slider, hats left out.
struct ControllerFacts {
  std::string name{};
  int vendor = 0, product = 0;  ///< of USB; 0 where there is none
  ControllerKind kind = ControllerKind::kUnknown;
  int axes = 0, buttons = 0, hats = 0;
};

/// Triggers rest at the low end.
enum class PadAxis { kLeftX, kLeftY, kRightX, kRightY, kLeftTrigger, kRightTrigger };
inline constexpr int kPadAxes = 6;

/// By place, whatever stands on them: south is A on one make, a cross on another.
enum class PadButton {
  kSouth,
  kEast,
  kWest,
  kNorth,
  kBack,
  kGuide,
  kStart,
  kLeftStick,
  kRightStick,
  kLeftShoulder,
  kRightShoulder,
  kUp,
  kDown,
  kLeft,
  kRight,
  kExtra,
  kPaddle1,
  kPaddle2,
  kPaddle3,
  kPaddle4,
  kTouchpad
};
inline constexpr int kPadButtons = 21;

enum class AxisUse {
  kNothing,
  kSteering,
  kGasAndBrake,  ///< of a stick: gas forward, brake back
  kSecondX,      ///< what the game knows as Rx
  kSecondY,      ///< what the game knows as Ry
  kGas,          ///< of a pedal or trigger, as the next two
  kBrake,
  kClutch  ///< the game has none
};

enum class LayoutKind { kGamepad, kWheel, kPedals, kStick, kNothing };

struct ControllerLayout {
  LayoutKind kind = LayoutKind::kNothing;
  bool isFromTable = false;     ///< the model is known
  std::vector<AxisUse> axes{};  ///< by the number of the axis
  double pedalRest = 1;         ///< the end, -1 or 1, where pedals of its kind mostly rest
  std::vector<int> buttons{};   ///< by the number of the button: the game's number, `kNoButton` for none
};
inline constexpr int kNoButton = -1;
inline constexpr int kMostButtons = 32;  ///< that the game can tell apart

ControllerLayout layoutOf(const ControllerFacts& facts);

/// Whether a car can be driven with it; pedals need a wheel beside them.
constexpr bool canDrive(LayoutKind kind) {
  return kind != LayoutKind::kPedals && kind != LayoutKind::kNothing;
}

/// How many buttons the game has to look at: one more than the highest number.
int buttonCount(const ControllerLayout& layout);

}  // namespace vorn
