// The whole game in this process, with controllers that exist only for SDL: a player's hands
// and feet act in every yield. Runs within with_desktop.sh.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "demo/demo_driver.h"
#include "desktop/player.h"
#include "platform/common/forwarding_platform.h"
#include "platform/common/key_codes.h"
#include "platform/desktop/desktop_platform.h"
#include "shell/start_up.h"
#include "support/temporary_folder.h"
#include "support/virtual_controller.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr int kLow = -32768, kHigh = 32767;
constexpr const char* kTitleMenu = " Select. Exit Game. ";

/// The desktop platform with somebody who listens, watches the car and acts, until he has had enough.
class LivePlatform : public ForwardingPlatform {
 public:
  /// Neither is owned; what is said arrives in `captions`.
  LivePlatform(Platform& desktop, std::stringstream& captions)
      : ForwardingPlatform(desktop), captions_(captions) {}

  /// Called after every yield; what it throws ends the game.
  std::function<void()> act = [] {};
  std::vector<std::string> heard;  ///< all that has been said
  std::vector<TickReport> ticks;

  bool hasHeard(const std::string& text) const {
    return std::find(heard.begin(), heard.end(), text) != heard.end();
  }
  /// Holds a key down, until another one or none (null) is held.
  void hold(const Key* key) {
    if (key != nullptr && key != held_ && receiver_ != nullptr) {
      receiver_->Form_KeyDown(key->virtualKeyCode, 0);
    }
    held_ = key;
  }
  bool isQuiet() { return voice_ == nullptr || voice_->RunningState() != Voice::kSpeaking; }

  void setEventReceiver(EventReceiver* receiver) override {
    receiver_ = receiver;
    inner().setEventReceiver(receiver);
  }
  std::unique_ptr<KeyboardDevice> createKeyboardDevice() override {
    return std::make_unique<Keyboard>(held_);
  }
  std::unique_ptr<Voice> createVoice() override {
    auto voice = inner().createVoice();
    voice_ = voice.get();
    return voice;
  }
  void carTicked(const TickReport& report) override {
    ticks.push_back(report);
    inner().carTicked(report);
  }

 private:
  class Keyboard : public KeyboardDevice {
   public:
    explicit Keyboard(const Key* const& held) : held_(held) {}
    void SetCommonDataFormat(int) override {}
    void SetCooperativeLevel(int) override {}
    void Acquire() override {}
    KeyboardState GetDeviceStateKeyboard() override {
      KeyboardState state{};
      if (held_ != nullptr) state[static_cast<std::size_t>(held_->keyCode)] = 1;
      return state;
    }

   private:
    const Key* const& held_;
  };

  void doYield(int atMostMs) override {
    inner().yield(atMostMs);
    for (std::string line; std::getline(captions_, line);) heard.push_back(line);
    captions_.clear();
    if (steady_clock::now() > end_) {
      throw std::runtime_error("the session does not end; said at last: " +
                               (heard.empty() ? "nothing" : heard.back()));
    }
    act();
  }

  std::stringstream& captions_;
  const Key* held_ = nullptr;
  EventReceiver* receiver_ = nullptr;
  Voice* voice_ = nullptr;  // lives with the game
  const steady_clock::time_point end_ = steady_clock::now() + 3min;
};

/// One thing after the other: what is to be done once something has happened.
class Plan {
 public:
  using Condition = std::function<bool()>;
  using Action = std::function<void()>;

  void when(Condition condition, Action action) {
    steps_.push_back({std::move(condition), std::move(action)});
  }
  void act() {
    if (next_ < steps_.size() && steps_[next_].condition()) steps_[next_++].action();
  }
  bool isDone() const { return next_ == steps_.size(); }

 private:
  struct Step {
    Condition condition;
    Action action;
  };
  std::vector<Step> steps_;
  std::size_t next_ = 0;
};

class GameWithControllers : public testing::Test {
 protected:
  GameWithControllers() {
    copySounds(folder);
    DesktopOptions options;
    options.folder = folder.path();
    options.speech = SpeechChoice::kEspeak;
    options.captions = &captions;
    desktop = makeDesktopPlatform(options);
    platform = std::make_unique<LivePlatform>(*desktop, captions);
  }
  /// Plays until the plan is done; returns what was said.
  void play() {
    platform->act = [this] {
      if (alsoActs) alsoActs();
      plan.act();
      if (plan.isDone() && !std::exchange(hasLeft, true)) throw WindowClosed();
    };
    GameState game(*platform);
    Form_Load(game);
  }
  void cutTitle() {
    plan.when(after(500ms), [this] { platform->hold(keyByName("Enter")); });
    plan.when(after(50ms), [this] { platform->hold(nullptr); });
  }
  Plan::Condition said(const std::string& text) {
    return [this, text] { return platform->hasHeard(text); };
  }
  /// Some time after the step before.
  Plan::Condition after(std::chrono::milliseconds rest) {
    auto start = std::make_shared<steady_clock::time_point>();
    return [start, rest] {
      if (*start == steady_clock::time_point{}) *start = steady_clock::now();
      return steady_clock::now() - *start >= rest;
    };
  }

  TemporaryFolder folder;
  std::stringstream captions;
  std::unique_ptr<Platform> desktop;
  std::unique_ptr<LivePlatform> platform;
  Plan plan;
  std::function<void()> alsoActs;
  bool hasLeft = false;
};

/// A G29 as Linux shows it: steering, clutch, gas, brake; pedals rest at the high end.
VirtualModel g29() {
  return {.type = SDL_JOYSTICK_TYPE_WHEEL,
          .axes = {0, kHigh, kHigh, kHigh},
          .buttons = 25,
          .hats = 1,
          .vendor = 0x046d,
          .product = 0xc24f,
          .name = "Driving wheel"};
}

TEST_F(GameWithControllers, AGamepadMovesThroughTheMenusByItsDirectionalPadAndSelectsWithItsBottomButton) {
  VirtualController pad({.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER,
                         .axes = {0, 0, 0, 0, kLow, kLow},
                         .buttons = SDL_CONTROLLER_BUTTON_MAX});
  const auto holdUntil = [&](int button, const std::string& text) {
    plan.when([] { return true; }, [&pad, button] { pad.button(button, true); });
    plan.when(said(text), [&pad, button] { pad.button(button, false); });
  };
  cutTitle();
  plan.when(said(kTitleMenu), [] {});
  holdUntil(SDL_CONTROLLER_BUTTON_DPAD_UP, " Start Game. ");
  holdUntil(SDL_CONTROLLER_BUTTON_A, " Select, joystick ");
  holdUntil(SDL_CONTROLLER_BUTTON_DPAD_DOWN, " key board ");
  holdUntil(SDL_CONTROLLER_BUTTON_DPAD_UP, " joystick ");
  holdUntil(SDL_CONTROLLER_BUTTON_A, " Select the track you wish to run, Maple Leaf Try Oval ");
  play();
  EXPECT_TRUE(plan.isDone());
}

/// Without a report yet, or with a throttle for its second axis, it stands as if pushed all the way.
TEST_F(GameWithControllers, NoMenuRunsByItself) {
  VirtualController stick({.axes = {0, kLow}});
  std::size_t saidAtFirst = 0;
  cutTitle();
  plan.when(said(kTitleMenu), [&] { saidAtFirst = platform->heard.size(); });
  plan.when(after(2500ms), [&] { EXPECT_EQ(platform->heard.size(), saidAtFirst); });
  play();
  EXPECT_TRUE(plan.isDone());
}

TEST_F(GameWithControllers, AWheelThatIsUnpluggedOnFullGasLetsTheCarRollOutAndGoesOnWhenItIsBack) {
  auto wheel = std::make_unique<VirtualController>(g29());
  DemoDriver driver(1);
  bool isDriven = true;  // by the driver
  std::size_t overheard = 0, watched = 0;
  const Key* keyOfDriver = nullptr;
  alsoActs = [&] {
    for (; overheard < platform->heard.size(); ++overheard) driver.hear(platform->heard[overheard]);
    for (; watched < platform->ticks.size(); ++watched) driver.watch(platform->ticks[watched]);
    const DemoControls& controls =
        driver.act(static_cast<std::uint32_t>(platform->tickCount()), platform->isQuiet());
    if (controls.keyDown != keyOfDriver) {
      keyOfDriver = controls.keyDown;
      platform->hold(keyOfDriver);
    }
    if (!isDriven) return;
    const auto pedal = [](int press) { return kHigh - static_cast<int>(press * 6.5535); };  // of 10000
    wheel->axis(0, static_cast<int>(controls.wheel.x * 3.2767));
    wheel->axis(2, pedal(std::max(0, -controls.wheel.y)));
    wheel->axis(3, pedal(std::max(0, controls.wheel.y)));
    for (int button = 0; button < 25; ++button) {
      wheel->button(button, controls.wheel.buttons[static_cast<std::size_t>(button)] != 0);
    }
  };
  const auto speed = [&] { return platform->ticks.empty() ? 0 : platform->ticks.back().speed; };
  const auto gas = [&] { return platform->ticks.empty() ? 0 : platform->ticks.back().joyGasBrake; };
  double speedAtUnplugging = 0;
  std::size_t ticksAtUnplugging = 0;
  cutTitle();
  plan.when([&] { return speed() > 60 && gas() == -10000; },
            [&] {
              speedAtUnplugging = speed();
              ticksAtUnplugging = platform->ticks.size();
              isDriven = false;
              wheel.reset();
            });
  plan.when(said(" The controller is disconnected. "), [] {});
  plan.when([&] { return platform->ticks.size() >= ticksAtUnplugging + 12; },
            [&] {
              EXPECT_EQ(gas(), 0);
              EXPECT_LT(speed(), speedAtUnplugging - 15);
              wheel = std::make_unique<VirtualController>(g29());
            });
  plan.when(said(" The controller is connected again. "), [&] { wheel->axis(2, kLow); });
  plan.when([&] { return gas() == -10000; }, [] {});
  play();
  EXPECT_TRUE(plan.isDone());
}

}  // namespace
}  // namespace vorn
