#include "platform/common/controller_info.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <iterator>

namespace vorn {
namespace {

/// What the default control map gives each button of the game's numbers.
constexpr const char* kUses[] = {
    "speed; in menus select",
    "position across the track",
    "start the engine, later the fuel gauge",
    "pit road",
    "gear",
    "lap",
    "horn",
    "elapsed time",
    "shift up; in menus back to the first entry",
    "shift down",
};

/// The controls of a gamepad, in the order of `PadAxis` and `PadButton`.
constexpr const char* kPadAxisNames[kPadAxes] = {"Left stick, left and right",
                                                 "Left stick, forward and back",
                                                 "Right stick, left and right",
                                                 "Right stick, forward and back",
                                                 "Left trigger",
                                                 "Right trigger"};
constexpr const char* kPadButtonNames[kPadButtons] = {
    "Bottom button (A, cross)",
    "Right button (B, circle)",
    "Left button (X, square)",
    "Top button (Y, triangle)",
    "Back (select, share)",
    "Guide (home)",
    "Start (options)",
    "Left stick, pressed",
    "Right stick, pressed",
    "Left shoulder",
    "Right shoulder",
    "Directional pad, up",
    "Directional pad, down",
    "Directional pad, left",
    "Directional pad, right",
    "Extra button (microphone, capture)",
    "First paddle",
    "Second paddle",
    "Third paddle",
    "Fourth paddle",
    "Touch pad, pressed",
};

const char* wordsFor(AxisUse use) {
  switch (use) {
    case AxisUse::kSteering:
      return "steering";
    case AxisUse::kGasAndBrake:
      return "gas forward, brake back; in menus previous and next";
    case AxisUse::kSecondX:
      return "steering, if configured";
    case AxisUse::kSecondY:
      return "gas and brake, if configured";
    case AxisUse::kGas:
      return "gas; in menus previous";
    case AxisUse::kBrake:
      return "brake; in menus next";
    case AxisUse::kClutch:
      return "clutch, of which the game has none";
    case AxisUse::kNothing:
      break;
  }
  return "nothing";
}

std::string kindInWords(const ControllerLayout& layout) {
  switch (layout.kind) {
    case LayoutKind::kGamepad:
      return "a gamepad";
    case LayoutKind::kWheel:
      return layout.isFromTable ? "a wheel of a known model" : "a wheel";
    case LayoutKind::kPedals:
      return "pedals";
    case LayoutKind::kStick:
      return "a joystick";
    case LayoutKind::kNothing:
      break;
  }
  return "nothing that the game can use";
}

std::string useOfButton(int number) {
  return number < static_cast<int>(std::size(kUses)) ? kUses[number] : "nothing unless configured";
}

/// Vendor and product as lists of devices write them.
std::string idInWords(const ControllerFacts& facts) {
  std::array<char, 10> id{};
  std::snprintf(id.data(), id.size(), "%04x:%04x", static_cast<unsigned>(facts.vendor) & 0xffffU,
                static_cast<unsigned>(facts.product) & 0xffffU);
  return id.data();
}

std::string axisInWords(const ControllerLayout& layout, std::size_t axis) {
  const bool isPad = layout.kind == LayoutKind::kGamepad;
  const std::string name = isPad ? kPadAxisNames[axis] : "Axis " + std::to_string(axis);
  return name + ": " + wordsFor(layout.axes[axis]) + ".";
}

std::string buttonInWords(const ControllerLayout& layout, std::size_t button) {
  const int number = layout.buttons[button];
  if (layout.kind != LayoutKind::kGamepad) {
    return "Button " + std::to_string(button) + ": " + useOfButton(number) + ".";
  }
  const std::string name = kPadButtonNames[button];
  if (number == kNoButton) return name + ": as the left stick pushed that way.";
  return name + ": button " + std::to_string(number) + ", " + useOfButton(number) + ".";
}

void addControls(const ControllerFacts& facts, const ControllerLayout& layout,
                 std::vector<std::string>& lines) {
  for (std::size_t axis = 0; axis < layout.axes.size(); ++axis) {
    lines.push_back(axisInWords(layout, axis));
  }
  if (canDrive(layout.kind) && facts.hats > 0) {
    lines.emplace_back("Directional pad, up and down: gas and brake; in menus previous and next.");
  }
  for (std::size_t button = 0; button < layout.buttons.size(); ++button) {
    lines.push_back(buttonInWords(layout, button));
  }
}

}  // namespace

std::vector<std::string> controllerInfo(const std::vector<ControllerFacts>& connected) {
  std::vector<ControllerLayout> layouts;
  std::transform(connected.begin(), connected.end(), std::back_inserter(layouts), layoutOf);
  const auto firstWhere = [&](auto isIt) {
    return static_cast<std::size_t>(std::find_if(layouts.begin(), layouts.end(), isIt) - layouts.begin());
  };
  const std::size_t driver = firstWhere([](const ControllerLayout& layout) { return canDrive(layout.kind); });
  const std::size_t pedals =
      firstWhere([](const ControllerLayout& layout) { return layout.kind == LayoutKind::kPedals; });
  const bool hasWheel = driver < layouts.size() && layouts[driver].kind == LayoutKind::kWheel;

  std::vector<std::string> lines;
  for (std::size_t i = 0; i < connected.size(); ++i) {
    const bool isUsed = i == driver || (i == pedals && hasWheel);
    lines.push_back("Controller " + std::to_string(i + 1) + ": " + connected[i].name + " (" +
                    idInWords(connected[i]) + "), " + kindInWords(layouts[i]) +
                    (isUsed ? ". The game uses it." : ". The game does not use it."));
    addControls(connected[i], layouts[i], lines);
  }
  if (lines.empty()) lines.emplace_back("No game controller is connected.");
  return lines;
}

}  // namespace vorn
