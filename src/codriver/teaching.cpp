#include "codriver/teaching.h"

#include <utility>

#include "race/drive_train.h"
#include "sound/loading.h"
#include "sound/playback.h"
#include "tracks/runner.h"

namespace vorn {
namespace {

constexpr int kPriorityLevel = 2;

class TaughtKeyboard : public KeyboardDevice {
 public:
  TaughtKeyboard(std::unique_ptr<KeyboardDevice> inner, const TaughtPlatform& platform)
      : inner_(std::move(inner)), platform_(platform) {}
  void SetCommonDataFormat(int format) override { inner_->SetCommonDataFormat(format); }
  void SetCooperativeLevel(int flags) override { inner_->SetCooperativeLevel(flags); }
  void Acquire() override { inner_->Acquire(); }
  KeyboardState GetDeviceStateKeyboard() override {
    KeyboardState state = inner_->GetDeviceStateKeyboard();
    if (platform_.onKeys) platform_.onKeys(state);
    return state;
  }

 private:
  std::unique_ptr<KeyboardDevice> inner_;
  const TaughtPlatform& platform_;
};

class TaughtController : public ControllerDevice {
 public:
  TaughtController(std::unique_ptr<ControllerDevice> inner, const TaughtPlatform& platform)
      : inner_(std::move(inner)), platform_(platform) {}
  void SetCommonDataFormat(int format) override { inner_->SetCommonDataFormat(format); }
  void SetCooperativeLevel(int flags) override { inner_->SetCooperativeLevel(flags); }
  void SetEventNotification(int handle) override { inner_->SetEventNotification(handle); }
  void SetRange(int low, int high) override { inner_->SetRange(low, high); }
  void SetAxisProperty(AxisProperty property, int object, int value) override {
    inner_->SetAxisProperty(property, object, value);
  }
  void Acquire() override { inner_->Acquire(); }
  void Unacquire() override { inner_->Unacquire(); }
  void Poll() override { inner_->Poll(); }
  JoystickState GetDeviceStateJoystick() override {
    JoystickState state = inner_->GetDeviceStateJoystick();
    if (platform_.onController) platform_.onController(state);
    return state;
  }
  int buttonCount() override { return inner_->buttonCount(); }

 private:
  std::unique_ptr<ControllerDevice> inner_;
  const TaughtPlatform& platform_;
};

void putCar(GameState& g, const Track& track, const CarPlace& place) {
  static_cast<RaceState&>(g) = RaceState();
  g.lastTickCount = g.platform.tickCount();
  g.lapPosition = place.lapPosition;
  g.lateralPosition = place.lateralPosition;
  g.speed = place.speed;
  g.gear = place.gear;
  g.fuel = kFullTank;
  g.steerDrag = track.steerDrag;
  g.lapsToRun = 1;
  g.escapePressed = 0;
  g.speedMarkSaid = {};
  if (track.rule != nullptr) track.rule(g);
}

}  // namespace

void TaughtPlatform::carTicked(const TickReport& report) {
  GuestPlatform::carTicked(report);
  if (onTick) onTick(report);
}

std::unique_ptr<KeyboardDevice> TaughtPlatform::createKeyboardDevice() {
  return std::make_unique<TaughtKeyboard>(GuestPlatform::createKeyboardDevice(), *this);
}

std::unique_ptr<ControllerDevice> TaughtPlatform::createControllerDevice(const std::string& identifier) {
  return std::make_unique<TaughtController>(GuestPlatform::createControllerDevice(identifier), *this);
}

void openSounds(GameState& g) {
  g.directSound = g.platform.createSoundDevice();
  g.directSound->SetCooperativeLevel(kPriorityLevel);
  setwaves(g);
}

bool driveLap(GameState& g, int track, const Track& road, const CarPlace& place) {
  g.trackChoice = track;
  putCar(g, road, place);
  sars(g);
  resetEnginePitch(g);
  g.engineBuffer->SetVolume(g.soundVolume);
  g.engineBuffer->Play(SoundBuffer::kLooping);
  const bool isCompleted = driveLaps(g, road);
  stopall(g);
  stopOneShot(g);
  g.escapePressed = 0;
  return isCompleted;
}

}  // namespace vorn
