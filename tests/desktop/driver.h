/// A driver who knows the track by its spoken positions alone.
#pragma once

#include <string>

#include "desktop/player.h"

namespace vorn {

/// Keeps the car on the road. Every turn of the first track and of its pit lane
/// pushes to the right, so the middle that is aimed at lies left of the middle.
class PositionDriver {
 public:
  explicit PositionDriver(Player& player) : player_(player) {}

  /// Drives until something is said that is no position; returns that.
  std::string driveToTheEnd(int longestSeconds);

  int crashes() const { return crashes_; }

 private:
  void steer(int position);
  void restart();
  void hold(const std::string& key);

  Player& player_;
  std::string held_;
  double lastPosition_ = 50;
  int crashes_ = 0;
};

}  // namespace vorn
