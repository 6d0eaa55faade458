// The platform of the demonstration: its driver at the controls, the player with a way out.

#include "demo/demo_platform.h"

#include "unit/platform/headless/tiny_game.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::Gt;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

struct Told : EventReceiver {
  void Form_KeyDown(int virtualKeyCode, int) override { keys.push_back(virtualKeyCode); }
  void DirectXEvent8_DXCallback(int eventId) override { events.push_back(eventId); }
  std::vector<int> keys, events;
};

/// A demonstration on a headless platform whose script is the player.
class DemoPlatformTest : public HeadlessTest {
 protected:
  using Demonstration = std::function<void(Platform&)>;

  int show(const std::string& script, const Demonstration& demonstration) {
    return run(script, [&](HeadlessPlatform& p) {
      const auto demo = makeDemoPlatform(p, 1, captions);
      demo->setEventReceiver(&told);
      demonstration(*demo);
      demo->setEventReceiver(nullptr);
    });
  }
  static bool isSame(const JoystickState& a, const JoystickState& b) {
    return a.x == b.x && a.y == b.y && a.buttons == b.buttons;
  }

  static TickReport carAt(double lateralPosition) {
    TickReport report{};
    report.speed = 80;
    report.gear = 1;
    report.segment = 1;
    report.lateralPosition = lateralPosition;
    return report;
  }

  std::ostringstream captions;
  Told told;
};

TEST_F(DemoPlatformTest, TellsOfTheWheelWhenItMovesAndOnlyThen) {
  int moves = 0;
  show("wait 100000", [&](Platform& p) {
    const auto wheel = p.createControllerDevice(p.attachedControllers().at(0));
    const auto voice = p.createVoice();
    wheel->SetEventNotification(1);
    wheel->Acquire();
    voice->Speak(" Ladies and Gentlemen, Start Your Engines! ", speak_flags::kQueue);
    JoystickState before = wheel->GetDeviceStateJoystick();
    for (int ms = 0; ms < 30000; ++ms) {
      if (ms == 5000) voice->Speak(" 10 ", speak_flags::kQueue);
      if (ms > 20000 && ms % 100 == 0) p.carTicked(carAt(20.0 + ms % 700 / 10));
      p.yield();
      const JoystickState now = wheel->GetDeviceStateJoystick();
      moves += !isSame(before, now);
      before = now;
    }
  });
  EXPECT_THAT(moves, Gt(10));
  EXPECT_THAT(told.events, SizeIs(moves));
  EXPECT_THAT(told.events, testing::Each(1));
}

TEST_F(DemoPlatformTest, AWheelThatIsNotAskedToTellsNothing) {
  show("wait 100000", [&](Platform& p) {
    const auto wheel = p.createControllerDevice("demonstration");
    const auto voice = p.createVoice();
    voice->Speak(" Ladies and Gentlemen, Start Your Engines! ", speak_flags::kQueue);
    for (int ms = 0; ms < 10000; ++ms) p.yield();
  });
  EXPECT_THAT(told.events, IsEmpty());
}

TEST_F(DemoPlatformTest, EscapeEndsItAndNoOtherKeyDoes) {
  show("wait 10\ntap A\ntap Enter\nwait 10\npress Escape\nwait 100000", [&](Platform& p) {
    for (int ms = 0; ms < 135; ++ms) EXPECT_NO_THROW(p.yield());
    const auto askOnAndOn = [&] {
      for (int ms = 0; ms < 100; ++ms) p.yield();
    };
    EXPECT_THROW(askOnAndOn(), WindowClosed);
    EXPECT_NO_THROW(askOnAndOn()) << "it is asked for once";
  });
  EXPECT_THAT(told.keys, IsEmpty()) << "the player's keys are not the driver's";
}

TEST_F(DemoPlatformTest, InTheShutdownTheDriverRestsAndTheVoiceIsStillRead) {
  show("wait 100000", [&](Platform& p) {
    const auto wheel = p.createControllerDevice("demonstration");
    const auto voice = p.createVoice();
    wheel->SetEventNotification(1);
    p.enterShutdown();
    voice->Speak(" Ladies and Gentlemen, Start Your Engines! ", speak_flags::kQueue);
    for (int ms = 0; ms < 10000; ++ms) p.yield();
  });
  EXPECT_THAT(told.events, IsEmpty());
  EXPECT_THAT(captions.str(), HasSubstr("Ladies and Gentlemen"));
}

TEST_F(DemoPlatformTest, LeavesThePlayersFilesAlone) {
  folder.write("vorn1ops.cfg", "old");
  show("wait 100000", [&](Platform& p) {
    p.files().write("vorn1ops.cfg", "new");
    p.files().write("vorn1maple0001.rec", "new");
    p.files().append("vorn1log.txt", "new");
    p.files().remove("vorn1ops.cfg");
    EXPECT_EQ(p.files().read("vorn1ops.cfg"), "old");
    EXPECT_THAT(p.files().list("vorn1", ""), ElementsAre("vorn1ops.cfg"));
  });
  EXPECT_THAT(folder.names(), ElementsAre("vorn1ops.cfg"));
}

}  // namespace
}  // namespace vorn
