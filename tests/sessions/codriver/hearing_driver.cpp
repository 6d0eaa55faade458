#include "sessions/codriver/hearing_driver.h"

#include <algorithm>
#include <cmath>

#include "codriver/slider.h"
#include "codriver/turn_calls.h"
#include "demo/wheel_driver.h"
#include "race/drive_train.h"
#include "race/steering.h"

namespace vorn {
namespace {

constexpr double kInside = 18, kOutside = 72;  // of a left turn
constexpr double kLineUp = 5000;               // units before a turn at which its inside is made for
constexpr double kHolds = 6.3;                 // lateral units a tick that the wheel can do against a push
constexpr double kDrift = 35;                  // lateral units that a turn may win
constexpr double kSlowing = 3.2;               // mph a tick
constexpr double kSlack = 500;                 // units that the reckoning may be off
constexpr double kWorthSteering = 4;
constexpr double kFullStep = 6.67;
constexpr double kAxisPerStep = 1500;
constexpr double kJumpSpeed = 120;

}  // namespace

HearingDriver::HearingDriver(double steerDrag, int aheadMs) : drag_(steerDrag), aheadMs_(aheadMs) {
  car_.lateralPosition = 50;
  car_.gear = 1;
  car_.speed = 24;
}

void HearingDriver::hear(const TraceLine& line) {
  if (line.at("ev") != "sound") return;
  const std::string buffer = line.at("buffer");
  if (buffer != "codriver turn" && buffer != "codriver slider") return;
  Heard& tone = buffer == "codriver turn" ? turn_ : slider_;
  const std::string operation = line.at("op");
  const std::int64_t now = line.at("ms");
  if (operation == "SetFrequency") tone.hertz = line.at("value").get<int>() / 48;
  if (operation == "SetPan") tone.pan = line.at("value");
  if (operation == "Play") {
    tone.since = now;
    if (&tone == &turn_ && ++tonesOfCall_ == 1) noteCall(0);
  }
  if (operation == "Stop" && tone.since >= 0) {
    if (&tone == &turn_) {
      if (tonesOfCall_ == 1) noteCall(now - tone.since);
      if (tonesOfCall_ == 2) tonesOfCall_ = 0;
    }
    tone.since = -1;
  }
}

/// At its beginning a call tells the side and the push, at the end of its first tone the length.
void HearingDriver::noteCall(std::int64_t lengthMs) {
  if (lengthMs > 0) {
    called_.back().length = lengthOfTone(static_cast<int>(lengthMs));
    return;
  }
  // As far as the car comes in the time ahead, with full gas.
  double distance = 0;
  for (double step = 0, ms = aheadMs_ + kTickMs / 2; soonestMs(car_, distance) < ms; distance += step) {
    step = 20;
  }
  const int side = turn_.pan == 0 ? 0 : turn_.pan < 0 ? -1 : 1;
  called_.push_back({way_ + distance, 6000, pushOfPitch(turn_.hertz), std::max(car_.speed, 1.0), side});
}

const HearingDriver::Called* HearingDriver::at(double way) const {
  for (const Called& turn : called_) {
    if (way >= turn.start && way < turn.start + turn.length) return &turn;
  }
  return nullptr;
}

const HearingDriver::Called* HearingDriver::next() const {
  for (const Called& turn : called_) {
    if (turn.start > way_) return &turn;
  }
  return nullptr;
}

double HearingDriver::pushOn(double way, double speed) const {
  const Called* const turn = at(way);
  if (turn == nullptr || turn->side == 0) return 0;
  return -turn->side * turn->push * speed / turn->speed;
}

bool HearingDriver::isMakingForRamp() const {
  const Called* const here = at(way_);
  return here != nullptr && here->side == 0 && here->start + here->length - way_ < 6000;
}

/// The tick as the car does it.
void HearingDriver::reckon() {
  car_.lateralPosition += pushOn(way_, car_.speed);
  car_.gear = std::clamp(car_.gear + shift_, 1, 4);
  shift_ = 0;
  applyGas(car_, gasOfAxis(pedals_));
  if (steering_ != 0) {
    car_.lateralPosition += lateralStep(steering_);
    car_.speed -= drag_ * steeringLoss(car_.speed, steering_);
  }
  if (car_.lateralPosition < kGrooveLeft || car_.lateralPosition > kGrooveRight) car_.speed -= 2;
  if (pedals_ > 0) car_.speed -= pedals_ / 10000.0;
  car_.speed = std::max(car_.speed, 1.0);
  car_.lateralPosition = std::clamp(car_.lateralPosition, 0.0, 100.0);
  way_ += car_.speed;
  while (!called_.empty() && called_.front().start + called_.front().length < way_ - 3000)
    called_.pop_front();
}

void HearingDriver::listenToSlider() {
  double ahead = kSliderTicks * lateralStep(steering_);
  for (int i = 0; i < kSliderTicks; ++i) ahead += pushOn(way_ + i * car_.speed, car_.speed);
  const bool isRamp = isMakingForRamp();
  if (slider_.since < 0) {
    const double safe = isRamp ? 4 : 22;
    car_.lateralPosition = std::clamp(car_.lateralPosition + ahead, 50 - safe, 50 + safe) - ahead;
  } else {
    const double place = placeOfTone({slider_.hertz, 0, slider_.pan}, isRamp);
    double& reckoned = car_.lateralPosition;
    if (place > 0.5 && place < 99.5) {
      reckoned = place - ahead;
    } else if (place <= 0.5) {
      reckoned = std::min(reckoned, 0.5 - ahead);
    } else {
      reckoned = std::max(reckoned, 99.5 - ahead);
    }
  }
  car_.lateralPosition = std::clamp(car_.lateralPosition, 0.0, 100.0);
}

double HearingDriver::bearable(const Called& turn) const {
  if (turn.side == 0) return kJumpSpeed;
  double speed = 240;
  for (; speed > 20; --speed) {
    const double lost = (turn.push * speed / turn.speed - kHolds) * turn.length / speed;
    if (lost <= kDrift) break;
  }
  return speed;
}

double HearingDriver::limit() const {
  double limit = 240;
  for (const Called& turn : called_) {
    const bool isOver = turn.start + turn.length <= way_;
    if (isOver) continue;
    double distance = turn.start - way_ - kSlack;
    if (turn.side == 0) distance = turn.start + turn.length - 4000 - way_;
    const double speed = bearable(turn);
    limit = std::min(limit, std::sqrt(speed * speed + 2 * kSlowing * std::max(distance, 0.0)));
  }
  return limit;
}

double HearingDriver::line() const {
  const auto mirrored = [](double place, int side) { return side < 0 ? place : 100 - place; };
  const Called* const here = at(way_);
  if (here != nullptr && here->side == 0) return 50;
  if (here != nullptr) {
    const double done = (way_ - here->start) / here->length;
    return mirrored(kInside + (kOutside - kInside) * done, here->side);
  }
  const Called* const ahead = next();
  if (ahead == nullptr || ahead->start - way_ > kLineUp) return std::clamp(car_.lateralPosition, 25.0, 75.0);
  return ahead->side == 0 ? 50 : mirrored(kInside, ahead->side);
}

std::string HearingDriver::after(std::span<const TraceLine> lines) {
  reckon();
  for (const TraceLine& line : lines) hear(line);
  listenToSlider();
  return drive();
}

std::string HearingDriver::drive() {
  const double wanted = limit();
  double step = std::clamp(line() - car_.lateralPosition - pushOn(way_, car_.speed), -kFullStep, kFullStep);
  if (std::fabs(step) < (isMakingForRamp() ? 1 : kWorthSteering)) step = 0;
  steering_ = static_cast<int>(std::clamp(step * kAxisPerStep, -10000.0, 10000.0));
  if (car_.speed > wanted + 2) {
    pedals_ = 10000;
  } else if (car_.speed > wanted) {
    pedals_ = 0;
  } else {
    pedals_ = gasAxis(wanted, car_.gear);
  }
  std::string statements =
      "axis X " + std::to_string(steering_) + "\naxis Y " + std::to_string(pedals_) + "\n";
  if (!held_.empty()) {
    statements += "button " + held_ + " up\n";
    held_.clear();
  } else if (const int gear = gearFor(car_.speed, car_.gear); gear != car_.gear) {
    held_ = gear > car_.gear ? "8" : "9";
    shift_ = gear > car_.gear ? 1 : -1;
    statements += "button " + held_ + " down\n";
  }
  return statements;
}

}  // namespace vorn
