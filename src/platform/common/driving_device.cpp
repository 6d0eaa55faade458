#include "platform/common/driving_device.h"

#include <utility>

#include "platform/common/notices.h"
#include "platform/common/rumble.h"
#include "platform/errors.h"

namespace vorn {
namespace {

bool operator==(const JoystickState& one, const JoystickState& other) {
  return one.x == other.x && one.y == other.y && one.rx == other.rx && one.ry == other.ry &&
         one.buttons == other.buttons;
}

}  // namespace

void DrivingDevice::SetCommonDataFormat(int format) {
  constexpr int kJoystick = 3;
  if (format != kJoystick) {
    throw PlatformError("SetCommonDataFormat", std::to_string(format), "this is a game controller");
  }
}

void DrivingDevice::SetRange(int low, int high) {
  if (low >= high) {
    throw PlatformError("SetRange", std::to_string(low) + ", " + std::to_string(high), "an empty range");
  }
  for (AxisLaw& law : laws_) {
    law.low = low;
    law.high = high;
  }
}

void DrivingDevice::SetAxisProperty(AxisProperty property, int object, int value) {
  if ((object != kObjectX && object != kObjectY) || value < 0 || value > 10000) {
    throw PlatformError("SetProperty", std::to_string(object) + ", " + std::to_string(value), "out of range");
  }
  AxisLaw& law = laws_[object == kObjectX ? 0 : 1];
  (property == AxisProperty::kDeadZone ? law.deadZone : law.saturation) = value;
}

void DrivingDevice::Acquire() {
  isAcquired_ = true;
  told_ = state();
}

JoystickState DrivingDevice::GetDeviceStateJoystick() {
  if (!isAcquired_) {
    throw InputLost();
  }
  return state();
}

JoystickState DrivingDevice::state() {
  const ControllerReading now = read();
  return {axisReading(now.steering, laws_[0]), axisReading(now.gasAndBrake(), laws_[1]),
          axisReading(now.secondX, laws_[2]), axisReading(now.secondY, laws_[3]), now.buttons};
}

void DrivingDevice::notify(EventReceiver* receiver) {
  if (!isAcquired_ || !notify_ || receiver == nullptr) {
    return;
  }
  const JoystickState now = state();
  if (now == told_) {
    return;
  }
  told_ = now;
  usedAt_ = Clock::now();
  receiver->DirectXEvent8_DXCallback(*notify_);
}

bool DrivingDevice::isInHand() const {
  return usedAt_ && Clock::now() - *usedAt_ < kStillInHand;
}

void DrivingDevice::lookAfterPlug(std::vector<std::string>& news) {
  if (!isAttached()) {
    if (!std::exchange(isGone_, true)) {
      news.emplace_back(kControllerGone);
    }
    if (!comeBack()) {
      return;
    }
  }
  if (std::exchange(isGone_, false)) {
    news.emplace_back(kControllerBack);
  }
}

}  // namespace vorn
