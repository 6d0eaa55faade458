/// Devices and a voice on top of others: pass every call on. Whoever wants to
/// change or watch some of them derives from these.
#pragma once

#include <memory>
#include <utility>

#include "platform/input_devices.h"
#include "platform/voice.h"

namespace vorn {

class ForwardingKeyboard : public KeyboardDevice {
 public:
  explicit ForwardingKeyboard(std::unique_ptr<KeyboardDevice> inner) : inner_(std::move(inner)) {}
  void SetCommonDataFormat(int format) override { inner_->SetCommonDataFormat(format); }
  void SetCooperativeLevel(int flags) override { inner_->SetCooperativeLevel(flags); }
  void Acquire() override { inner_->Acquire(); }
  KeyboardState GetDeviceStateKeyboard() override { return inner_->GetDeviceStateKeyboard(); }

 protected:
  KeyboardDevice& inner() { return *inner_; }

 private:
  std::unique_ptr<KeyboardDevice> inner_;
};

class ForwardingController : public ControllerDevice {
 public:
  explicit ForwardingController(std::unique_ptr<ControllerDevice> inner) : inner_(std::move(inner)) {}
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
  JoystickState GetDeviceStateJoystick() override { return inner_->GetDeviceStateJoystick(); }
  int buttonCount() override { return inner_->buttonCount(); }

 protected:
  ControllerDevice& inner() { return *inner_; }

 private:
  std::unique_ptr<ControllerDevice> inner_;
};

class ForwardingVoice : public Voice {
 public:
  explicit ForwardingVoice(std::unique_ptr<Voice> inner) : inner_(std::move(inner)) {}
  std::vector<std::string> GetVoices() override { return inner_->GetVoices(); }

 protected:
  Voice& inner() { return *inner_; }
  void doSpeak(const std::string& text, int flags) override { inner_->Speak(text, flags); }

 private:
  void doSetVoice(int index) override { inner_->setVoice(index); }
  void doSetVolume(int volume) override { inner_->setVolume(volume); }
  void doSetRate(int rate) override { inner_->setRate(rate); }
  int doRunningState() override { return inner_->RunningState(); }

  std::unique_ptr<Voice> inner_;
};

}  // namespace vorn
