#include "sessions/tracks/keyboard_driver.h"

#include <algorithm>
#include <cmath>

#include "demo/wheel_driver.h"
#include "race/steering.h"

namespace vorn {
namespace {

constexpr int kBuildUp = 200;  // of the steering reading, a tick
constexpr int kFullLock = 10000;
constexpr double kAllowance = 2;  // mph above the limit at which the brake comes in

constexpr Skill kReflexSkill{.entryStep = 0,
                             .changeStep = 0,
                             .buildUp = kBuildUp / 1500.0,
                             .topStep = 6.3,
                             .drift = 30,
                             .slowing = 3.3,
                             .jumpSpeed = 115,
                             .inside = 30,
                             .outside = 70};
constexpr std::size_t kReaction = 2;  // ticks
constexpr double kNearEnough = 12;    // lateral units
constexpr double kNearEnoughToJump = 6;

constexpr Skill kPlanningSkill{.entryStep = 4,
                               .changeStep = 0.5,
                               .buildUp = kBuildUp / 1500.0,
                               .topStep = 6.3,
                               .drift = 55,
                               .slowing = 3.3,
                               .jumpSpeed = 115,
                               .inside = 20,
                               .outside = 75};
constexpr int kHorizon = 60;  // ticks
constexpr int kLengths[] = {1, 2, 3, 5, 8, 12, 18, 26};
// What a plan costs a tick.
constexpr double kAtEase = 10;  // lateral units from a wall; below, each one hurts by its square
constexpr double kNearWall = 3;
constexpr double kOffLine = 0.01;  // times the square
constexpr double kSteering = 0.6;

double square(double x) {
  return x * x;
}

std::string holdKey(const char* name, bool& isDown, bool wanted) {
  if (isDown == wanted) return "";
  isDown = wanted;
  return std::string(wanted ? "press " : "release ") + name + "\n";
}

}  // namespace

std::string KeyboardDriver::steer(const Sight& sight) {
  const int key = choose(sight);
  std::string statements;
  if (key != held_) {
    if (held_ != 0) statements += held_ < 0 ? "release Left\n" : "release Right\n";
    if (key != 0) statements += key < 0 ? "press Left\n" : "press Right\n";
  }
  held_ = key;
  return statements;
}

std::string KeyboardDriver::pedal(const Sight& sight) {
  const double limit = road_.speedLimit(sight);
  return holdKey("LeftCtrl", isGas_, sight.speed <= limit) +
         holdKey("LeftShift", isBraking_, sight.speed > limit + kAllowance);
}

std::string KeyboardDriver::shift(const Sight& sight) {
  if (shifting_) {
    const std::string statement = std::string("release ") + shifting_ + "\n";
    shifting_ = nullptr;
    return statement;
  }
  const int wanted = gearFor(sight.speed, sight.gear);
  if (wanted == sight.gear || sight.gear == 0) return "";
  shifting_ = wanted > sight.gear ? "Up" : "Down";
  return std::string("press ") + shifting_ + "\n";
}

std::string KeyboardDriver::after(const TickReport& tick) {
  const Sight sight = road_.sightAfter(tick);
  return steer(sight) + pedal(sight) + shift(sight);
}

ReflexDriver::ReflexDriver(const Track& track) : KeyboardDriver(track, kReflexSkill) {}

int ReflexDriver::choose(const Sight& sight) {
  seen_.push_back(sight.lateralPosition);
  if (seen_.size() > kReaction + 1) seen_.pop_front();
  const double off = road().line(sight) - seen_.front();
  const double nearEnough = road().strictness(sight) > 1 ? kNearEnoughToJump : kNearEnough;
  return off < -nearEnough ? -1 : off > nearEnough ? 1 : 0;
}

double SteeringKeys::hold(int key) {
  if (key == 0) return 0;
  if (key < 0) {
    right = 0;
    left = std::max(left - kBuildUp, -kFullLock);
    return lateralStep(left);
  }
  left = 0;
  right = std::min(right + kBuildUp, kFullLock);
  return lateralStep(right);
}

PlanningDriver::PlanningDriver(const Track& track) : KeyboardDriver(track, kPlanningSkill) {}

int PlanningDriver::keyTowardLine(const Sight& sight, const SteeringKeys& keys) const {
  const double off = road().line(sight) - road().pushed(sight).lateralPosition;
  SteeringKeys tried = keys;
  const int key = off < 0 ? -1 : 1;
  const double step = std::fabs(tried.hold(key));
  return std::fabs(off) > std::max(2.0, step * 0.6) ? key : 0;
}

double PlanningDriver::costOf(const Plan& plan, Sight sight) const {
  SteeringKeys keys = keys_;
  double cost = 0;
  for (int tick = 0; tick < kHorizon; ++tick) {
    const int key = tick < plan.ticks ? plan.key : keyTowardLine(sight, keys);
    Sight next = road().steered(road().pushed(sight), keys.hold(key));
    next.speed = road().speedKept(next);
    const double fromWall = std::min(next.lateralPosition, 100 - next.lateralPosition);
    cost += kNearWall * square(std::max(0.0, kAtEase - fromWall));
    cost += kOffLine * road().strictness(sight) * square(next.lateralPosition - road().line(sight));
    if (key != 0) cost += kSteering;
    sight = next;
  }
  return cost;
}

int PlanningDriver::bestKey(const Sight& sight) const {
  int best = keyTowardLine(sight, keys_);
  double least = costOf({0, 0}, sight);
  for (const int key : {0, -1, 1}) {
    for (const int ticks : kLengths) {
      const double cost = costOf({key, ticks}, sight);
      if (cost >= least) continue;
      least = cost;
      best = key;
    }
  }
  return best;
}

int PlanningDriver::choose(const Sight& sight) {
  const int key = bestKey(sight);
  keys_.hold(key);
  return key;
}

}  // namespace vorn
