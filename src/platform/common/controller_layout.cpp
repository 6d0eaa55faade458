#include "platform/common/controller_layout.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace vorn {
namespace {

/// A wheel whose pedals are known by the numbers of their axes; it is steered by the first one.
/// All of these rest at the upper end.
struct WheelRow {
  int vendor = 0, product = 0;
  int gas, brake, clutch;  ///< -1: there is none
};

constexpr int kLogitech = 0x046d, kThrustmaster = 0x044f, kFanatec = 0x0eb7;
constexpr int kSteeringAxis = 0;
constexpr int kNone = -1;

/// As the Linux drivers report them: products of hid-lg4ff and hid-logitech-hidpp, axes as
/// owners and the steering wheel managers of Linux know them.
constexpr WheelRow kWheels[] = {
    {kLogitech, 0xc24f, 2, 3, 1},      // G29
    {kLogitech, 0xc262, 1, 2, 3},      // G920
    {kLogitech, 0xc266, 2, 3, 1},      // G923 for PlayStation
    {kLogitech, 0xc26e, 1, 2, 3},      // G923 for Xbox
    {kLogitech, 0xc299, 2, 3, 1},      // G25
    {kLogitech, 0xc29b, 2, 3, 1},      // G27
    {kLogitech, 0xc294, 1, 2, kNone},  // Driving Force, Driving Force EX, Formula Force EX
    {kLogitech, 0xc298, 1, 2, kNone},  // Driving Force Pro
    {kLogitech, 0xc29a, 1, 2, kNone},  // Driving Force GT
    {kLogitech, 0xc295, 1, 2, kNone},  // Momo Force
    {kLogitech, 0xca03, 1, 2, kNone},  // Momo Racing
    {kLogitech, 0xc29c, 1, 2, kNone},  // Speed Force Wireless
    {kLogitech, 0xc20e, 1, 2, kNone},  // WingMan Formula GP
    {kLogitech, 0xc291, 1, 2, kNone},  // WingMan Formula Force
    {kLogitech, 0xc293, 1, 2, kNone},  // WingMan Formula Force GP
    {kThrustmaster, 0xb677, 2, 1, 3},  // T150
    {kThrustmaster, 0xb67f, 2, 1, 3},  // TMX
    {kThrustmaster, 0xb696, 2, 1, 3},  // T248
    {kThrustmaster, 0xb66e, 2, 1, 3},  // T300 RS
    {kThrustmaster, 0xb66f, 2, 1, 3},  // T300 RS with the formula rim
    {kThrustmaster, 0xb66d, 1, 2, 3},  // T300 RS in its other mode
    {kThrustmaster, 0xb65e, 2, 1, 3},  // T500 RS
    {kThrustmaster, 0xb689, 2, 1, 3},  // TS-PC
};

/// Pedals with a plug of their own whose name does not tell.
struct PedalsRow {
  int vendor, product;
};
constexpr PedalsRow kPedals[] = {
    {kThrustmaster, 0xb371},  // T-LCM
    {kThrustmaster, 0xb678},  // T-Pedals
    {kFanatec, 0x183b},       // ClubSport V3
    {kFanatec, 0x6204},       // CSL Elite
    {kFanatec, 0x6205},       // CSL, load cell
    {kFanatec, 0x6206},       // CSL Elite V2
};

/// The game's number of each button of a gamepad, by its place: the default control map gives
/// them their meaning.
struct PadRow {
  PadButton button;
  int number;
};
constexpr PadRow kPad[] = {
    {PadButton::kSouth, 0},          // speed; select
    {PadButton::kWest, 1},           // track position
    {PadButton::kStart, 2},          // start engine, fuel
    {PadButton::kNorth, 3},          // pit road
    {PadButton::kLeftStick, 4},      // gear
    {PadButton::kRightStick, 5},     // lap
    {PadButton::kEast, 6},           // horn
    {PadButton::kBack, 7},           // time
    {PadButton::kRightShoulder, 8},  // up a gear
    {PadButton::kLeftShoulder, 9},   // down a gear
    {PadButton::kGuide, 10},         // from here on whatever the player chooses
    {PadButton::kLeft, 11},         {PadButton::kRight, 12},    {PadButton::kExtra, 13},
    {PadButton::kPaddle1, 14},      {PadButton::kPaddle2, 15},  {PadButton::kPaddle3, 16},
    {PadButton::kPaddle4, 17},      {PadButton::kTouchpad, 18},
};

bool contains(std::string text, const std::string& word) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text.find(word) != std::string::npos;
}

std::vector<int> buttonsAsTheyAre(int count) {
  std::vector<int> buttons(static_cast<std::size_t>(std::clamp(count, 0, kMostButtons)));
  std::iota(buttons.begin(), buttons.end(), 0);
  return buttons;
}

/// Wheel and pedals of one device, or pedals alone (`steering` is `kNone`).
ControllerLayout withPedals(const ControllerFacts& facts, LayoutKind kind, int steering,
                            const WheelRow& row) {
  ControllerLayout layout{.kind = kind, .buttons = buttonsAsTheyAre(facts.buttons)};
  layout.axes.assign(static_cast<std::size_t>(facts.axes), AxisUse::kNothing);
  const auto use = [&](int axis, AxisUse what) {
    if (axis >= 0 && axis < facts.axes) layout.axes[static_cast<std::size_t>(axis)] = what;
  };
  use(steering, AxisUse::kSteering);
  use(row.gas, AxisUse::kGas);
  use(row.brake, AxisUse::kBrake);
  use(row.clutch, AxisUse::kClutch);
  return layout;
}

/// The model's row where the device has the axes for it: in its compatibility mode an old
/// wheel has one axis for both pedals.
const WheelRow* knownWheel(const ControllerFacts& facts) {
  const auto row = std::find_if(std::begin(kWheels), std::end(kWheels), [&](const WheelRow& wheel) {
    return wheel.vendor == facts.vendor && wheel.product == facts.product;
  });
  const bool isThere = row != std::end(kWheels) && std::max(row->gas, row->brake) < facts.axes;
  return isThere ? &*row : nullptr;
}

bool arePedals(const ControllerFacts& facts) {
  const bool isKnown = std::any_of(std::begin(kPedals), std::end(kPedals), [&](const PedalsRow& pedals) {
    return pedals.vendor == facts.vendor && pedals.product == facts.product;
  });
  return isKnown || (contains(facts.name, "pedal") && !contains(facts.name, "rudder") &&
                     !contains(facts.name, "wheel") && facts.kind != ControllerKind::kGamepad);
}

ControllerLayout padLayout() {
  ControllerLayout layout{.kind = LayoutKind::kGamepad,
                          .axes = {AxisUse::kSteering, AxisUse::kGasAndBrake, AxisUse::kSecondX,
                                   AxisUse::kSecondY, AxisUse::kBrake, AxisUse::kGas},
                          .pedalRest = -1};
  layout.buttons.assign(kPadButtons, kNoButton);
  for (const PadRow& row : kPad) layout.buttons[static_cast<std::size_t>(row.button)] = row.number;
  return layout;
}

/// Where there is a clutch most makers put it first; one puts the brake there.
ControllerLayout wheelByShape(const ControllerFacts& facts) {
  constexpr int kWithClutch = 4;
  WheelRow row{.gas = 1, .brake = 2, .clutch = kNone};
  if (facts.axes >= kWithClutch) {
    row = facts.vendor == kThrustmaster ? WheelRow{.gas = 2, .brake = 1, .clutch = 3}
                                        : WheelRow{.gas = 2, .brake = 3, .clutch = 1};
  }
  return withPedals(facts, LayoutKind::kWheel, kSteeringAxis, row);
}

/// A second stick lies behind the throttle, or, of four axes, behind the first one. Which axes are a
/// stick's is not told before they have been read: sliders do not rest in their middle.
ControllerLayout stickLayout(const ControllerFacts& facts) {
  constexpr int kWithThrottle = 5, kTwoSticks = 4;
  ControllerLayout layout{.kind = LayoutKind::kStick, .buttons = buttonsAsTheyAre(facts.buttons)};
  std::vector<AxisUse>& axes = layout.axes;
  axes = {AxisUse::kSteering, AxisUse::kGasAndBrake};
  if (facts.axes >= kWithThrottle) {
    axes.insert(axes.end(), {AxisUse::kNothing, AxisUse::kSecondX, AxisUse::kSecondY});
  } else if (facts.axes == kTwoSticks && facts.kind != ControllerKind::kFlightStick) {
    axes.insert(axes.end(), {AxisUse::kSecondX, AxisUse::kSecondY});
  }
  axes.resize(static_cast<std::size_t>(facts.axes), AxisUse::kNothing);
  return layout;
}

}  // namespace

ControllerLayout layoutOf(const ControllerFacts& facts) {
  constexpr int kWithPedals = 3;
  if (const WheelRow* row = knownWheel(facts)) {
    ControllerLayout layout = withPedals(facts, LayoutKind::kWheel, kSteeringAxis, *row);
    layout.isFromTable = true;
    return layout;
  }
  if (arePedals(facts)) {
    ControllerLayout layout =
        withPedals(facts, LayoutKind::kPedals, kNone, WheelRow{.gas = 0, .brake = 1, .clutch = 2});
    layout.pedalRest = -1;
    layout.buttons.clear();
    return layout;
  }
  const bool isWheel = facts.kind == ControllerKind::kWheel ||
                       (facts.kind == ControllerKind::kUnknown && contains(facts.name, "wheel"));
  if (isWheel && facts.axes >= kWithPedals) return wheelByShape(facts);
  switch (facts.kind) {
    case ControllerKind::kGamepad:
      return padLayout();
    case ControllerKind::kThrottle:
      return {};
    default:
      return stickLayout(facts);
  }
}

int buttonCount(const ControllerLayout& layout) {
  const auto highest = std::max_element(layout.buttons.begin(), layout.buttons.end());
  return highest == layout.buttons.end() ? 0 : *highest + 1;
}

}  // namespace vorn
