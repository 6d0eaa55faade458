#include "demo/demo_driver.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "tracks/catalogue.h"

namespace vorn {
namespace {

constexpr int kStartButton = 2;
constexpr int kUpShiftButton = 8;
constexpr int kDownShiftButton = 9;
constexpr int kFullGas = -10000;
constexpr int kHalfGas = -4500;

constexpr std::uint32_t kTapMs = 60;
constexpr std::uint32_t kBetweenTapsMs = 450;
constexpr std::uint32_t kButtonMs = 250;
constexpr std::uint32_t kHornMs = 10500;  // after " 10 "
constexpr std::uint32_t kReactionMs = 350;

constexpr const char* kTrackQuestion = " Select the track you wish to run, ";

/// What is answered when a text containing `heard` is said: these keys, then Enter.
struct Answer {
  const char* heard;
  std::vector<std::string_view> keys;
};

const Answer kAnswers[] = {
    {" Select. Exit Game. ", {"Up"}},
    {" Select, joystick ", {}},
    {kTrackQuestion, {}},
    {" Enter the number of laps", {"1"}},
    {" correct for the number of laps to run?", {}},
    {" Enter your name as the new record holder. ", {"D", "E", "M", "O"}},
    {" correct, for the new record holder?", {}},
    {" Select, repeat race time ", {"Up"}},
};

}  // namespace

DemoDriver::DemoDriver(int track)
    : track_(track), wheelDriver_(*allTracks()[static_cast<std::size_t>(track - 1)]) {}

void DemoDriver::hear(const std::string& text) {
  if (text.find(kTrackQuestion) != std::string::npos) {
    for (int i = 1; i < track_; ++i) tapWhenQuiet("Down");
  }
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
  heldButton_ = -1;
  const WheelControls hands = wheelDriver_.after(tick);
  controls_.wheel.x = hands.steering;
  controls_.wheel.y = hands.pedals;
  controls_.wheel.buttons[kUpShiftButton] = hands.isUpShiftHeld;
  controls_.wheel.buttons[kDownShiftButton] = hands.isDownShiftHeld;
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
