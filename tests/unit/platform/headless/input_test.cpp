#include "unit/platform/headless/tiny_game.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class HeadlessInput : public HeadlessTest {
 protected:
  /// Runs the script while the keyboard is read after every yield.
  void watchKeyboard(const std::string& script) {
    run(script, [&](HeadlessPlatform& p) {
      const auto keyboard = p.createKeyboardDevice();
      keyboard->Acquire();
      for (;;) {
        p.yield();
        const KeyboardState state = keyboard->GetDeviceStateKeyboard();
        std::vector<int> down;
        for (int code = 0; code < 256; ++code) {
          if (state[static_cast<std::size_t>(code)] != 0) down.push_back(code);
        }
        keysHeld.push_back(down);
      }
    });
  }
  /// How many milliseconds the key with this key code was down.
  int heldMs(int keyCode) const {
    int ms = 0;
    for (const auto& down : keysHeld) ms += static_cast<int>(std::count(down.begin(), down.end(), keyCode));
    return ms;
  }

  std::vector<std::vector<int>> keysHeld;  ///< a millisecond each, from the first yield on
};

TEST_F(HeadlessInput, APhysicalKeyGivesTheEventAndTheState) {
  watchKeyboard("wait 2\npress Enter\nwait 3\nrelease Enter\nwait 2\nend");
  EXPECT_THAT(keysDown, ElementsAre(KeyDown{3, 13, 0}));
  EXPECT_THAT(keysHeld, ElementsAre(IsEmpty(), IsEmpty(), ElementsAre(28), ElementsAre(28), ElementsAre(28),
                                    IsEmpty(), IsEmpty()));
}

TEST_F(HeadlessInput, AHeldKeyIsNotPressedAgain) {
  watchKeyboard("press A\nwait 2\npress A\nwait 2\nrelease A\nrelease A\npress A\nend");
  EXPECT_THAT(keysDown, ElementsAre(KeyDown{1, 65, 0}, KeyDown{5, 65, 0}));
}

TEST_F(HeadlessInput, ATapHoldsForItsTime) {
  watchKeyboard("tap Up\necho over\ntap Down 5\necho again\nend");
  EXPECT_EQ(heldMs(200), 60);
  EXPECT_EQ(heldMs(208), 5);
  EXPECT_THAT(echoes("over"), ElementsAre(1 + 80));
  EXPECT_THAT(echoes("again"), ElementsAre(1 + 80 + 25));
}

TEST_F(HeadlessInput, TypingGivesKeyAfterKey) {
  watchKeyboard("type aB 7\necho over\nend");
  EXPECT_THAT(keysDown, ElementsAre(KeyDown{1, 65, 0}, KeyDown{81, 16, 1}, KeyDown{161, 66, 0},
                                    KeyDown{241, 32, 0}, KeyDown{321, 55, 0}));
  EXPECT_THAT(echoes("over"), ElementsAre(1 + 5 * 80));
}

TEST_F(HeadlessInput, EitherShiftLooksTheSameToTheWindow) {
  watchKeyboard("press LeftShift\nrelease LeftShift\npress RightShift\npress RightCtrl\npress LeftAlt\nend");
  EXPECT_THAT(keysDown,
              ElementsAre(KeyDown{1, 16, 1}, KeyDown{1, 16, 1}, KeyDown{1, 17, 3}, KeyDown{1, 18, 7}));
}

TEST_F(HeadlessInput, KeysAreTraced) {
  run("press RightCtrl\nwait 2\nrelease RightCtrl\nend");
  EXPECT_EQ(trace.text(),
            "{\"ms\":1,\"ev\":\"input\",\"source\":\"key\",\"name\":\"RightCtrl\",\"value\":1}\n"
            "{\"ms\":3,\"ev\":\"input\",\"source\":\"key\",\"name\":\"RightCtrl\",\"value\":0}\n"
            "{\"ms\":3,\"ev\":\"end\",\"exit\":0}\n");
}

TEST_F(HeadlessInput, TheEventComesAfterItsTraceLine) {
  onKey = [&] { EXPECT_THAT(trace.of("input"), SizeIs(1)); };
  run("press A\nend");
  EXPECT_THAT(keysDown, SizeIs(1));
}

TEST_F(HeadlessInput, WithoutTheFocusTheStateIsReadButNoEventComes) {
  watchKeyboard("focus off\npress A\nwait 3\nrelease A\nfocus on\npress B\nwait 1\nend");
  EXPECT_EQ(heldMs(30), 3);
  EXPECT_THAT(keysDown, ElementsAre(KeyDown{4, 66, 0}));
  EXPECT_THAT(trace.of("input"), SizeIs(5));
  EXPECT_EQ(traceText(trace.of("input").front()),
            "{\"ms\":1,\"ev\":\"input\",\"source\":\"focus\",\"name\":null,\"value\":0}");
}

TEST_F(HeadlessInput, AKeyHeldWhileTheFocusReturnsGivesNoEvent) {
  watchKeyboard("focus off\npress A\nfocus on\nwait 3\npress A\nend");
  EXPECT_THAT(keysDown, IsEmpty());
}

TEST_F(HeadlessInput, NobodyNeedsToListen) {
  run("tap A\nend", [](HeadlessPlatform& p) {
    p.setEventReceiver(nullptr);
    yieldForever(p);
  });
  EXPECT_THAT(keysDown, IsEmpty());
}

TEST_F(HeadlessInput, TheKeyboardDeviceIsTracedButNotItsReads) {
  run("end", [](HeadlessPlatform& p) {
    const auto keyboard = p.createKeyboardDevice();
    EXPECT_THROW(keyboard->GetDeviceStateKeyboard(), PlatformError);
    keyboard->SetCommonDataFormat(1);
    keyboard->SetCooperativeLevel(kBackgroundNonExclusive);
    keyboard->Acquire();
    keyboard->GetDeviceStateKeyboard();
  });
  EXPECT_THAT(trace.devices("keyboard"),
              ElementsAre("create", "SetCommonDataFormat 1", "SetCooperativeLevel 10", "Acquire", "release"));
}

class HeadlessController : public HeadlessTest {
 protected:
  void SetUp() override {
    options.controller = true;
    onCallback = [this] {
      try {
        readings.push_back(controller->GetDeviceStateJoystick());
      } catch (const InputLost&) {
        ++losses;
        if (acquiresAgain) controller->Acquire();
      }
    };
  }
  /// Runs the script with the controller open and reported.
  void drive(const std::string& script) {
    run(script, [&](HeadlessPlatform& p) {
      controller = p.createControllerDevice(p.attachedControllers().at(0));
      controller->SetEventNotification(7);
      controller->Acquire();
      yieldForever(p);
    });
    controller.reset();
  }

  std::unique_ptr<ControllerDevice> controller;
  std::vector<JoystickState> readings;
  int losses = 0;
  bool acquiresAgain = true;
};

TEST_F(HeadlessController, IsThereOnlyWhereItIsAttached) {
  options.controller = false;
  run("end", [](HeadlessPlatform& p) {
    EXPECT_THAT(p.attachedControllers(), IsEmpty());
    EXPECT_THROW(p.createControllerDevice("virtual controller"), PlatformError);
  });
  options.controller = true;
  run("end", [](HeadlessPlatform& p) {
    ASSERT_THAT(p.attachedControllers(), SizeIs(1));
    EXPECT_THROW(p.createControllerDevice("another"), PlatformError);
    EXPECT_EQ(p.createControllerDevice(p.attachedControllers().front())->buttonCount(), 32);
  });
}

TEST_F(HeadlessController, StatementsForAControllerNeedOne) {
  options.controller = false;
  for (const char* statement : {"axis X 1", "button 0 down", "lost"}) {
    EXPECT_EQ(run(statement), 2) << statement;
    EXPECT_EQ(diagnostics.str(), "test.script:1: no controller is attached\n");
  }
}

TEST_F(HeadlessController, AChangeIsReportedOnceInTheYieldInWhichItHappens) {
  drive("wait 4\naxis X -3000\nwait 5\nbutton 31 down\nwait 5\nend");
  EXPECT_THAT(callbacks, ElementsAre(Callback{5, 7}, Callback{10, 7}));
  ASSERT_THAT(readings, SizeIs(2));
  EXPECT_EQ(readings[0].x, -3000);
  EXPECT_EQ(readings[0].buttons[31], 0);
  EXPECT_EQ(readings[1].x, -3000);
  EXPECT_NE(readings[1].buttons[31], 0);
}

TEST_F(HeadlessController, StatementsOfOneYieldAreReportedTogetherAfterTheLast) {
  drive("axis X 1\naxis Y 2\naxis Rx 3\naxis Ry 4\nbutton 3 down\ntap A 0\nwait 5\nend");
  ASSERT_THAT(readings, SizeIs(1));
  EXPECT_EQ(readings[0].x, 1);
  EXPECT_EQ(readings[0].y, 2);
  EXPECT_EQ(readings[0].rx, 3);
  EXPECT_EQ(readings[0].ry, 4);
  EXPECT_NE(readings[0].buttons[3], 0);
}

TEST_F(HeadlessController, AChangeIsReportedWhateverFollowsItInTheSameYield) {
  drive("axis X 5\naxis Y 0\nbutton 0 up\nwait 2\nbutton 3 down\nbutton 4 up\nwait 2\nend");
  EXPECT_THAT(callbacks, ElementsAre(Callback{1, 7}, Callback{3, 7}));
}

TEST_F(HeadlessController, WhatDoesNotChangeIsNotReported) {
  drive(
      "axis X 5\nwait 2\naxis X 5\nwait 2\nbutton 0 up\nwait 2\nbutton 0 down\nwait 2\nbutton 0 down\nwait "
      "2\nend");
  EXPECT_THAT(callbacks, ElementsAre(Callback{1, 7}, Callback{7, 7}));
}

TEST_F(HeadlessController, IsReportedWithoutTheFocusToo) {
  drive("focus off\naxis X 5\nwait 2\nend");
  EXPECT_THAT(callbacks, ElementsAre(Callback{1, 7}));
}

TEST_F(HeadlessController, WhatWasHeldBeforeTheNotificationIsNotReported) {
  run("axis X 5\nwait 10\nend", [&](HeadlessPlatform& p) {
    p.yield();
    controller = p.createControllerDevice(p.attachedControllers().at(0));
    controller->SetEventNotification(1);
    controller->Acquire();
    EXPECT_EQ(controller->GetDeviceStateJoystick().x, 5);
    yieldForever(p);
  });
  controller.reset();
  EXPECT_THAT(callbacks, IsEmpty());
}

TEST_F(HeadlessController, ALostOneMustBeAcquiredAgain) {
  drive("lost\nwait 2\naxis X 5\nwait 2\naxis X 6\nwait 2\nend");
  EXPECT_THAT(callbacks, ElementsAre(Callback{3, 7}, Callback{5, 7}));
  EXPECT_EQ(losses, 1);
  ASSERT_THAT(readings, SizeIs(1));
  EXPECT_EQ(readings[0].x, 6);
  EXPECT_THAT(trace.devices("controller"),
              ElementsAre("create", "SetEventNotification 7", "Acquire", "Acquire"));
}

TEST_F(HeadlessController, StaysLostUntilItIsAcquired) {
  acquiresAgain = false;
  drive("lost\naxis X 5\nwait 2\naxis X 6\nwait 2\nend");
  EXPECT_EQ(losses, 2);
  EXPECT_THAT(readings, IsEmpty());
}

TEST_F(HeadlessController, AnUnacquiredOneCannotBeRead) {
  run("end", [](HeadlessPlatform& p) {
    const auto device = p.createControllerDevice(p.attachedControllers().at(0));
    EXPECT_THROW(device->GetDeviceStateJoystick(), InputLost);
    device->Acquire();
    EXPECT_NO_THROW(device->GetDeviceStateJoystick());
    device->Unacquire();
    EXPECT_THROW(device->GetDeviceStateJoystick(), InputLost);
  });
}

TEST_F(HeadlessController, AReleasedOneIsNotReported) {
  run("wait 2\naxis X 5\nwait 2\nend", [&](HeadlessPlatform& p) {
    p.createControllerDevice(p.attachedControllers().at(0))->SetEventNotification(1);
    yieldForever(p);
  });
  EXPECT_THAT(callbacks, IsEmpty());
}

TEST_F(HeadlessController, StatementsAreTraced) {
  drive("axis Rx -10000\nbutton 12 down\nbutton 12 up\nlost\nend");
  std::string inputs;
  for (const TraceLine& line : trace.of("input")) inputs += traceText(line) + "\n";
  EXPECT_EQ(inputs,
            "{\"ms\":1,\"ev\":\"input\",\"source\":\"axis\",\"name\":\"Rx\",\"value\":-10000}\n"
            "{\"ms\":1,\"ev\":\"input\",\"source\":\"button\",\"name\":\"12\",\"value\":1}\n"
            "{\"ms\":1,\"ev\":\"input\",\"source\":\"button\",\"name\":\"12\",\"value\":0}\n"
            "{\"ms\":1,\"ev\":\"input\",\"source\":\"lost\",\"name\":null,\"value\":null}\n");
}

TEST_F(HeadlessController, EverySettingIsTracedReadsAndPollsAreNot) {
  run("end", [](HeadlessPlatform& p) {
    const auto device = p.createControllerDevice(p.attachedControllers().at(0));
    device->SetCommonDataFormat(3);
    device->SetCooperativeLevel(kBackgroundNonExclusive);
    device->SetEventNotification(1);
    device->SetRange(-10000, 10000);
    device->SetAxisProperty(AxisProperty::kDeadZone, kObjectX, 800);
    device->SetAxisProperty(AxisProperty::kSaturation, kObjectY, 10000);
    device->Acquire();
    device->Poll();
    device->GetDeviceStateJoystick();
    device->Unacquire();
  });
  EXPECT_THAT(trace.devices("controller"),
              ElementsAre("create", "SetCommonDataFormat 3", "SetCooperativeLevel 10",
                          "SetEventNotification 1", "DIPROP_RANGE [-10000,10000]", "DIPROP_DEADZONE [0,800]",
                          "DIPROP_SATURATION [4,10000]", "Acquire", "Unacquire", "release"));
}

TEST_F(HeadlessInput, ATapBetweenTwoReadingsIsFoundByTheNextOneAlone) {
  std::vector<bool> found;
  run("wait 10\npress Up\nwait 30\nrelease Up\nwait 1000\n", [&](HeadlessPlatform& p) {
    const auto keyboard = p.createKeyboardDevice();
    keyboard->Acquire();
    for (int i = 0; i < 3; ++i) {
      yield(p, 100);
      found.push_back(keyboard->GetDeviceStateKeyboard()[200] != 0);
    }
  });
  EXPECT_THAT(found, ElementsAre(true, false, false));
}

TEST_F(HeadlessInput, ATapThatNobodyReadsInTimeIsForgotten) {
  run("press Up\nwait 30\nrelease Up\nwait 1000\n", [&](HeadlessPlatform& p) {
    const auto keyboard = p.createKeyboardDevice();
    keyboard->Acquire();
    yield(p, 31 + 251);
    EXPECT_EQ(keyboard->GetDeviceStateKeyboard()[200], 0);
  });
}

}  // namespace
}  // namespace vorn
