/// What the game reads out of a controller, given its layout and how its axes and
/// buttons stand. Pure, but for what it remembers of how they stood at first.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/common/controller_layout.h"

namespace vorn {

/// How the controls stand, by the numbers of `ControllerFacts`.
struct RawControls {
  std::vector<double> axes{};  ///< -1 .. 1
  std::vector<bool> buttons{};
  bool isUp = false, isDown = false;  ///< of the directional pad or hat
};

struct ControllerReading {
  double steering = 0;                               ///< -1 (left) .. 1
  double stick = 0;                                  ///< -1 (forward: gas) .. 1 (back: brake)
  double secondX = 0, secondY = 0;                   ///< -1 .. 1
  double gas = 0, brake = 0;                         ///< of pedals or triggers, 0 .. 1
  std::array<std::uint8_t, kMostButtons> buttons{};  ///< by the game's numbers; not zero: down

  /// -1 (gas) .. 1 (brake): of stick and pedals whichever has been moved further.
  double gasAndBrake() const;
  /// Pedals with a plug of their own count beside those of a wheel.
  void join(const ControllerReading& pedals);
};

/// One axis since it was first read.
class AxisWatch {
 public:
  /// -1 .. 1 of an axis that is at rest in its middle. One that stood at an end at first (it
  /// may be a slider, or the device has not reported yet) is neutral until it has moved.
  double swung(double travel);
  /// The same of one that might be a slider: it is one, and neutral for good, unless it stood in its middle.
  double swungIfCentred(double travel);
  /// How far down a pedal is, 0 .. 1, that mostly rests at the end `usualRest`. Where it stood
  /// elsewhere it is not pressed until it has moved; where that was the other end, and it
  /// leaves that by degrees, it rests there. (A wheel that has not reported yet seems to
  /// stand at an end, and jumps to where it is.)
  double pressed(double travel, double usualRest);

 private:
  void look(double travel);

  std::optional<double> first_;
  std::optional<double> firstMove_;  ///< where it was when it was first seen to have moved
};

class ControllerReader {
 public:
  explicit ControllerReader(ControllerLayout layout)
      : layout_(std::move(layout)), watches_(layout_.axes.size()) {}

  ControllerReading read(const RawControls& raw);
  const ControllerLayout& layout() const { return layout_; }

 private:
  void readAxis(std::size_t axis, double travel, ControllerReading& reading);

  ControllerLayout layout_;
  std::vector<AxisWatch> watches_;  ///< of its axes
};

}  // namespace vorn
