/// A platform on top of another: passes every call on. Whoever wants to change
/// or watch some of them derives from it.
#pragma once

#include "platform/platform.h"

namespace vorn {

class ForwardingPlatform : public Platform {
 public:
  /// `inner` is not owned.
  explicit ForwardingPlatform(Platform& inner) : inner_(inner) {}

  std::int32_t tickCount() override { return inner_.tickCount(); }
  double secondsSinceMidnight() override { return inner_.secondsSinceMidnight(); }
  Date today() override { return inner_.today(); }
  void setCaption(const std::string& caption) override { inner_.setCaption(caption); }
  void setEventReceiver(EventReceiver* receiver) override { inner_.setEventReceiver(receiver); }
  int messageBox(const std::string& text) override { return inner_.messageBox(text); }
  void enterShutdown() override { inner_.enterShutdown(); }
  std::unique_ptr<SoundDevice> createSoundDevice() override { return inner_.createSoundDevice(); }
  std::unique_ptr<KeyboardDevice> createKeyboardDevice() override { return inner_.createKeyboardDevice(); }
  std::vector<std::string> attachedControllers() override { return inner_.attachedControllers(); }
  std::unique_ptr<ControllerDevice> createControllerDevice(const std::string& identifier) override {
    return inner_.createControllerDevice(identifier);
  }
  std::unique_ptr<Voice> createVoice() override { return inner_.createVoice(); }
  Files& files() override { return inner_.files(); }
  void startProgram(const std::string& name, int windowStyle) override {
    inner_.startProgram(name, windowStyle);
  }
  double randomFraction() override { return inner_.randomFraction(); }
  void reseedRandom() override { inner_.reseedRandom(); }
  void carTicked(const TickReport& report) override { inner_.carTicked(report); }
  void menuOffered(bool isOpen) override { inner_.menuOffered(isOpen); }

 protected:
  Platform& inner() { return inner_; }

 private:
  void doYield(int atMostMs) override { inner_.yield(atMostMs); }

  Platform& inner_;
};

}  // namespace vorn
