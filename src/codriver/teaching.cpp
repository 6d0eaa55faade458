#include "codriver/teaching.h"

#include <utility>

#include "platform/common/forwarding_devices.h"
#include "race/drive_train.h"
#include "sound/loading.h"
#include "sound/playback.h"
#include "tracks/runner.h"

namespace vorn {
namespace {

constexpr int kPriorityLevel = 2;

class TaughtKeyboard : public ForwardingKeyboard {
 public:
  TaughtKeyboard(std::unique_ptr<KeyboardDevice> inner, const TaughtPlatform& platform)
      : ForwardingKeyboard(std::move(inner)), platform_(platform) {}
  KeyboardState GetDeviceStateKeyboard() override {
    KeyboardState state = inner().GetDeviceStateKeyboard();
    if (platform_.onKeys) platform_.onKeys(state);
    return state;
  }

 private:
  const TaughtPlatform& platform_;
};

class TaughtController : public ForwardingController {
 public:
  TaughtController(std::unique_ptr<ControllerDevice> inner, const TaughtPlatform& platform)
      : ForwardingController(std::move(inner)), platform_(platform) {}
  JoystickState GetDeviceStateJoystick() override {
    JoystickState state = inner().GetDeviceStateJoystick();
    if (platform_.onController) platform_.onController(state);
    return state;
  }

 private:
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
