#include "demo/demo_driver.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

namespace vorn {
namespace {

constexpr int kStartButton = 2;
constexpr int kUpShiftButton = 8;
constexpr int kFullGas = -10000;
constexpr int kHalfGas = -4500;

constexpr std::uint32_t kTapMs = 60;
constexpr std::uint32_t kBetweenTapsMs = 450;
constexpr std::uint32_t kButtonMs = 250;
constexpr std::uint32_t kHornMs = 10500;  // after " 10 "
constexpr std::uint32_t kReactionMs = 350;

constexpr double kAxisPerStep = 1500;  // steering reading that moves the car by 1 a tick
constexpr double kHomeward = 0.3;      // share of the way to the middle taken each tick
constexpr double kNearEnough = 1.5;
constexpr double kLastGearUp[] = {0, 76, 126, 176};  // mph at which each gear is done

/// What is answered when a text containing `heard` is said: these keys, then Enter.
struct Answer {
  const char* heard;
  std::vector<std::string_view> keys;
};

const Answer kAnswers[] = {
    {" Select. Exit Game. ", {"Up"}},
    {" Select, joystick ", {}},
    {" Select the track you wish to run, ", {}},
    {" Enter the number of laps", {"1"}},
    {" correct for the number of laps to run?", {}},
    {" Enter your name as the new record holder. ", {"D", "E", "M", "O"}},
    {" correct, for the new record holder?", {}},
    {" Select, repeat race time ", {"Up"}},
};

}  // namespace

void DemoDriver::hear(const std::string& text) {
  for (const Answer& answer : kAnswers) {
    if (text.find(answer.heard) == std::string::npos) continue;
    for (const std::string_view key : answer.keys) tapWhenQuiet(key);
    tapWhenQuiet("Enter");
  }
  if (text.find("Start Your Engines!") != std::string::npos) isStartingEngine_ = true;
  if (text == " 10 ") {
    isStartingEngine_ = false;
    isCountingDown_ = true;
    countdownStart_ = now_;
  }
  if (text.find(" Your time for ") != std::string::npos) {
    isDriving_ = false;
    controls_.wheel = JoystickState{};
  }
}

void DemoDriver::holdButton(int button, std::uint32_t untilMs) {
  heldButton_ = button;
  buttonUntil_ = untilMs;
}

void DemoDriver::watch(const TickReport& tick) {
  isDriving_ = true;
  // What moved the car that was not the wheel is the turn's push: it will come again.
  push_ = tick.lateralPosition - lastLateral_ - lastStep_;
  lastLateral_ = tick.lateralPosition;
  const double offMiddle = tick.lateralPosition - 50;
  double step = -push_ - kHomeward * offMiddle;
  if (std::fabs(push_) < 0.01 && std::fabs(offMiddle) < kNearEnough) step = 0;
  const auto axis = static_cast<int>(std::clamp(step * kAxisPerStep, -10000.0, 10000.0));
  lastStep_ = axis / kAxisPerStep;
  controls_.wheel.x = axis;
  controls_.wheel.y = kFullGas;
  const bool isGearDone = tick.gear >= 1 && tick.gear <= 3 && tick.speed > kLastGearUp[tick.gear];
  if (isGearDone && heldButton_ < 0) holdButton(kUpShiftButton, now_ + kButtonMs);
}

void DemoDriver::workKeys(std::uint32_t now, bool isQuiet) {
  if (controls_.keyDown) {
    if (now < keyUntil_) return;
    controls_.keyDown = nullptr;
    nextTapAt_ = now + kBetweenTapsMs;
  }
  if (!isQuiet) nextTapAt_ = std::max(nextTapAt_, now + kBetweenTapsMs);
  if (taps_.empty() || now < nextTapAt_) return;
  controls_.keyDown = taps_.front();
  taps_.pop_front();
  keyUntil_ = now + kTapMs;
}

void DemoDriver::startCar(std::uint32_t now) {
  if (isStartingEngine_ && heldButton_ < 0) holdButton(kStartButton, now + kButtonMs);
  if (!isCountingDown_) return;
  // A little music with the gas while the starter counts.
  const std::uint32_t waited = now - countdownStart_;
  controls_.wheel.y = waited > kHornMs || waited / 700 % 3 == 1 ? kHalfGas : 0;
  if (waited > kHornMs) controls_.wheel.y = kFullGas;
  if (waited > kHornMs + kReactionMs && heldButton_ < 0) {
    holdButton(kUpShiftButton, now + kButtonMs);
    isCountingDown_ = false;
  }
}

const DemoControls& DemoDriver::act(std::uint32_t now, bool isQuiet) {
  now_ = now;
  workKeys(now, isQuiet);
  if (!isDriving_) startCar(now);
  if (heldButton_ >= 0) {
    controls_.wheel.buttons[heldButton_] = now < buttonUntil_ ? 1 : 0;
    if (now >= buttonUntil_) heldButton_ = -1;
  }
  return controls_;
}

}  // namespace vorn
