#include "platform/common/forwarding_platform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::ElementsAre;

/// Writes down its calls and gives answers that can be told apart.
class NotedPlatform : public Platform {
 public:
  std::vector<std::string> calls;

  std::int32_t tickCount() override { return 17; }
  double secondsSinceMidnight() override { return 0.25; }
  Date today() override { return {3, 7, 2026}; }
  void setCaption(const std::string& caption) override { calls.push_back("caption " + caption); }
  void setEventReceiver(EventReceiver* receiver) override {
    calls.push_back(receiver ? "receiver" : "no receiver");
  }
  int messageBox(const std::string& text) override {
    calls.push_back("box " + text);
    return 5;
  }
  void enterShutdown() override { calls.push_back("shutdown"); }
  std::unique_ptr<SoundDevice> createSoundDevice() override { return nothing<SoundDevice>("sound"); }
  std::unique_ptr<KeyboardDevice> createKeyboardDevice() override {
    return nothing<KeyboardDevice>("keyboard");
  }
  std::vector<std::string> attachedControllers() override { return {"wheel", "pad"}; }
  std::unique_ptr<ControllerDevice> createControllerDevice(const std::string& identifier) override {
    return nothing<ControllerDevice>("controller " + identifier);
  }
  std::unique_ptr<Voice> createVoice() override { return nothing<Voice>("voice"); }
  Files& files() override { throw PlatformError("files", "", "there are none"); }
  void startProgram(const std::string& name, int windowStyle) override {
    calls.push_back("start " + name + " " + std::to_string(windowStyle));
  }
  double randomFraction() override { return 0.75; }
  void reseedRandom() override { calls.push_back("reseed"); }
  void carTicked(const TickReport& report) override {
    calls.push_back("tick " + std::to_string(report.segment));
  }
  void menuOffered(bool isOpen) override { calls.push_back(isOpen ? "menu" : "no menu"); }

 private:
  template <typename Device>
  std::unique_ptr<Device> nothing(const std::string& call) {
    calls.push_back(call);
    return nullptr;
  }
  void doYield(int atMostMs) override { calls.push_back("yield " + std::to_string(atMostMs)); }
};

struct NobodyListens : EventReceiver {
  void Form_KeyDown(int, int) override {}
  void DirectXEvent8_DXCallback(int) override {}
};

TEST(ForwardingPlatform, PassesEveryCallOn) {
  NotedPlatform inner;
  ForwardingPlatform outer(inner);
  NobodyListens receiver;
  EXPECT_EQ(outer.tickCount(), 17);
  EXPECT_EQ(outer.secondsSinceMidnight(), 0.25);
  EXPECT_EQ(outer.today().year, 2026);
  EXPECT_THAT(outer.attachedControllers(), ElementsAre("wheel", "pad"));
  EXPECT_EQ(outer.randomFraction(), 0.75);
  EXPECT_EQ(outer.messageBox("text"), 5);
  EXPECT_THROW(outer.files(), PlatformError);
  outer.setCaption("title");
  outer.setEventReceiver(&receiver);
  outer.setEventReceiver(nullptr);
  outer.createSoundDevice();
  outer.createKeyboardDevice();
  outer.createControllerDevice("pad");
  outer.createVoice();
  outer.startProgram("launcher", 3);
  outer.reseedRandom();
  TickReport report{};
  report.segment = 4;
  outer.carTicked(report);
  outer.menuOffered(true);
  outer.menuOffered(false);
  outer.yield(30);
  outer.enterShutdown();
  EXPECT_THAT(inner.calls, ElementsAre("box text", "caption title", "receiver", "no receiver", "sound",
                                       "keyboard", "controller pad", "voice", "start launcher 3", "reseed",
                                       "tick 4", "menu", "no menu", "yield 30", "shutdown"));
}

}  // namespace
}  // namespace vorn
