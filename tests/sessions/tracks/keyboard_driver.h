/// Drivers with keys. A steering key builds its effect up tick by tick for as long
/// as it is held, and keeps what it has built up until the other one is touched.
/// Both drivers turn ticks into script statements.
#pragma once

#include <deque>
#include <string>

#include "demo/road_book.h"

namespace vorn {

/// What a driver with keys does with gas, brake and gears; where to steer is left to others.
class KeyboardDriver {
 public:
  KeyboardDriver(const Track& track, const Skill& skill) : road_(track, skill) {}
  virtual ~KeyboardDriver() = default;

  /// What to do after this tick, one statement a line.
  std::string after(const TickReport& tick);

 protected:
  const RoadBook& road() const { return road_; }

 private:
  /// The steering key to hold: -1 left, 0 none, 1 right.
  virtual int choose(const Sight& sight) = 0;

  std::string steer(const Sight& sight);
  std::string pedal(const Sight& sight);
  std::string shift(const Sight& sight);

  RoadBook road_;
  int held_ = 0;
  bool isGas_ = true;
  bool isBraking_ = false;
  const char* shifting_ = nullptr;
};

/// Steers as hands do: sees the car two tenths of a second late, holds the key that
/// leads back to where it should be, and goes slowly enough for that.
class ReflexDriver : public KeyboardDriver {
 public:
  explicit ReflexDriver(const Track& track);

 private:
  int choose(const Sight& sight) override;

  std::deque<double> seen_;  ///< lateral places, the latest last
};

/// What has been built up on the two steering keys.
struct SteeringKeys {
  int left = 0;   ///< -10000..0
  int right = 0;  ///< 0..10000

  /// Holds `key` for a tick; returns how far the car is moved.
  double hold(int key);
};

/// Steers as well as keys allow: weighs six seconds ahead what each key would lead
/// to, and takes the one that keeps the car best.
class PlanningDriver : public KeyboardDriver {
 public:
  explicit PlanningDriver(const Track& track);

 private:
  /// One key for so many ticks, and then whichever leads to the line.
  struct Plan {
    int key;
    int ticks;
  };

  int choose(const Sight& sight) override;
  int bestKey(const Sight& sight) const;
  double costOf(const Plan& plan, Sight sight) const;
  int keyTowardLine(const Sight& sight, const SteeringKeys& keys) const;

  SteeringKeys keys_;
};

}  // namespace vorn
