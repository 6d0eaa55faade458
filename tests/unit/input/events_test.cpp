#include "input/events.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "speech/speech.h"
#include "support/game_rig.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The window's keys.

struct KeyCase {
  const char* key;
  const char* code;
  const char* character;
};

class WindowKey : public testing::TestWithParam<KeyCase> {};

TEST_P(WindowKey, LeavesItsCodeAndItsLowerCaseCharacter) {
  GameRig rig;
  rig.does(std::string("press ") + GetParam().key);
  EXPECT_EQ(rig.g.lastKeyCode, GetParam().code);
  EXPECT_EQ(rig.g.lastKeyChar, GetParam().character);
}

INSTANTIATE_TEST_SUITE_P(Keys, WindowKey,
                         testing::Values(KeyCase{"A", "65", "a"}, KeyCase{"Z", "90", "z"},
                                         KeyCase{"7", "55", "7"}, KeyCase{"Space", "32", " "},
                                         KeyCase{"Enter", "13", "\r"}, KeyCase{"Escape", "27", "\x1B"},
                                         KeyCase{"Up", "38", "&"}, KeyCase{"F1", "112", "p"},
                                         KeyCase{"Grave", "192", "\xE0"},
                                         KeyCase{"Apostrophe", "222", "\xFE"},
                                         KeyCase{"Minus", "189", "\xBD"}, KeyCase{"Insert", "45", "-"}));

TEST(WindowKeys, ComeOnceAPress) {
  GameRig rig;
  rig.does("press A");
  clk(rig.g);
  for (int i = 0; i < 1000; ++i) rig.g.platform.yield();
  EXPECT_EQ(rig.g.lastKeyCode, "");
}

TEST(Escape, RaisesItsFlagAnywhereAndNobodyLowersItHere) {
  GameRig rig;
  rig.does("press Escape");
  EXPECT_EQ(rig.g.escapePressed, 1);
  clk(rig.g);
  rig.does("press A");
  EXPECT_EQ(rig.g.escapePressed, 1);
  EXPECT_EQ(rig.g.lastKeyCode, "65");
}

// The controller.

TEST(Controller, LeavesItsAxesAndButtonsAtTheNextYield) {
  GameRig rig(Wheel::kController);
  rig.plan({"axis X -4000", "axis Y 2500", "button 9 down"});
  rig.g.platform.yield();
  EXPECT_EQ(rig.g.joySteering, -4000);
  EXPECT_EQ(rig.g.joyGasBrake, 2500);
  EXPECT_EQ(rig.g.btnDownShift, 1);
  EXPECT_EQ(rig.g.btnUpShift, 0);
  rig.does("button 9 up");
  EXPECT_EQ(rig.g.btnDownShift, 0);
}

TEST(Controller, IsReadAsItStandsWhenItIsSetUp) {
  GameRig rig(Wheel::kController);
  rig.does("axis X 700");
  rig.g.joySteering = 0;
  SetUpJoystick(rig.g);
  EXPECT_EQ(rig.g.joySteering, 700);
}

TEST(Controller, FeedsEachFlagFromItsButton) {
  int InputState::*const flags[] = {&InputState::btnSpeedometer, &InputState::btnTrackPosition,
                                    &InputState::btnStartEngine, &InputState::btnPitRoad,
                                    &InputState::btnSayGear,     &InputState::btnSayLap,
                                    &InputState::btnHorn,        &InputState::btnElapsedTime,
                                    &InputState::btnUpShift,     &InputState::btnDownShift};
  for (int button = 0; button < 10; ++button) {
    GameRig rig(Wheel::kController);
    rig.does("button " + std::to_string(button) + " down");
    for (int i = 0; i < 10; ++i) EXPECT_EQ(rig.g.*flags[i], i == button ? 1 : 0) << button << " " << i;
  }
}

TEST(Controller, ReadsTheOtherAxesIfTheMapSaysSo) {
  GameRig rig(Wheel::kController);
  rig.g.joySteeringAxis = 2;
  rig.g.joyGasAxis = 2;
  rig.plan({"axis X 1", "axis Y 2", "axis Rx 300", "axis Ry 400"});
  rig.g.platform.yield();
  EXPECT_EQ(rig.g.joySteering, 300);
  EXPECT_EQ(rig.g.joyGasBrake, 400);
}

TEST(Controller, FreezesAnAxisWhoseSelectorIsNone) {
  GameRig rig(Wheel::kController);
  rig.does("axis X 1234");
  rig.g.joySteeringAxis = 3;
  rig.g.joyGasAxis = 0;
  rig.plan({"axis X 1", "axis Y 2", "axis Rx 300", "axis Ry 400"});
  rig.g.platform.yield();
  EXPECT_EQ(rig.g.joySteering, 1234);
  EXPECT_EQ(rig.g.joyGasBrake, 0);
}

TEST(Controller, ThatIsLostIsAcquiredAgainAndChangesNothingMeanwhile) {
  GameRig rig(Wheel::kController);
  rig.does("axis X 1234");
  rig.does("lost");
  EXPECT_THAT(rig.told([&](GameState&) { rig.does("axis X 99"); }), testing::Contains("controller Acquire"));
  EXPECT_EQ(rig.g.joySteering, 1234);
  rig.does("axis X 100");
  EXPECT_EQ(rig.g.joySteering, 100);
}

TEST(Controller, IsReportedOnlyAfterAChange) {
  GameRig rig(Wheel::kController);
  rig.does("button 8 down");
  rig.g.btnUpShift = 0;
  for (int i = 0; i < 50; ++i) rig.g.platform.yield();
  EXPECT_EQ(rig.g.btnUpShift, 0);
  rig.does("axis X 1");
  EXPECT_EQ(rig.g.btnUpShift, 1);
}

// Capturing for the joystick wizard.

struct CaptureCase {
  int mode;
  std::vector<std::string> moves;
  int captured, value;
};

class Capture : public testing::TestWithParam<CaptureCase> {};

TEST_P(Capture, CatchesWhatIsMoved) {
  GameRig rig(Wheel::kController);
  rig.g.joyCaptureMode = GetParam().mode;
  rig.plan(GetParam().moves);
  rig.g.platform.yield();
  EXPECT_EQ(rig.g.joyCaptured, GetParam().captured);
  EXPECT_EQ(rig.g.joyCapturedValue, GetParam().value);
  EXPECT_EQ(rig.g.joySteering, 0);  // nothing is driven meanwhile
  EXPECT_EQ(rig.g.btnStartEngine, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Modes, Capture,
    testing::Values(CaptureCase{kCaptureButton, {"button 2 down"}, 1, 2},
                    CaptureCase{kCaptureButton, {"button 2 down", "button 5 down"}, 1, 5},
                    CaptureCase{kCaptureButton, {"button 31 down", "button 0 down"}, 1, 31},
                    CaptureCase{kCaptureButton, {"axis X -10000"}, 0, 0},
                    CaptureCase{kCaptureSteering, {"axis X -99"}, 0, 0},
                    CaptureCase{kCaptureSteering, {"axis X -100"}, 1, 1},
                    CaptureCase{kCaptureSteering, {"axis X 10000"}, 0, 0},
                    CaptureCase{kCaptureSteering, {"axis Rx -100"}, 2, 2},
                    CaptureCase{kCaptureSteering, {"axis Rx -9000", "axis X -100"}, 1, 1},
                    CaptureCase{kCaptureGas, {"axis Y -100"}, 1, 1},
                    CaptureCase{kCaptureGas, {"axis Ry -100"}, 2, 2},
                    CaptureCase{kCaptureGas, {"axis Y -99", "axis Ry -99"}, 0, 0}));

// clk.

TEST(Clk, ForgetsThePendingKeyAndYieldsThreeTimes) {
  GameRig rig;
  rig.does("press A");
  EXPECT_EQ(rig.timed(clk), 3);
  EXPECT_EQ(rig.g.lastKeyCode, "");
  EXPECT_EQ(rig.g.lastKeyChar, "");
}

TEST(Clk, KeepsTheCodeOfAKeyThatComesInIts) {
  GameRig rig;
  rig.plan({"press A"});
  clk(rig.g);
  EXPECT_EQ(rig.g.lastKeyCode, "65");
  EXPECT_EQ(rig.g.lastKeyChar, "");
}

TEST(Clk, RefreshesTheKeyboard) {
  GameRig rig;
  rig.does("press Up");
  EXPECT_FALSE(isKeyDown(rig.g, rig.g.keyMapUpShift));
  clk(rig.g);
  EXPECT_TRUE(isKeyDown(rig.g, rig.g.keyMapUpShift));
}

TEST(Clk, ForgetsTheEnterButtonThatIsStillHeldUntilTheControllerMoves) {
  GameRig rig(Wheel::kController);
  rig.does("button 0 down");
  clk(rig.g);
  EXPECT_EQ(rig.g.btnSpeedometer, 0);
  rig.does("axis X 5");
  EXPECT_EQ(rig.g.btnSpeedometer, 1);
}

TEST(Clk, LeavesTheEnterButtonAloneInARaceOnTheKeyboard) {
  GameRig rig(Wheel::kController);
  rig.g.inputDevice = kKeyboard;
  rig.does("button 0 down");
  clk(rig.g);
  EXPECT_EQ(rig.g.btnSpeedometer, 1);
}

TEST(IsKeyDown, FailsForACodeBeyondTheKeyboard) {
  GameRig rig;
  EXPECT_THROW(isKeyDown(rig.g, 256), PlatformError);
  EXPECT_THROW(isKeyDown(rig.g, -1), PlatformError);
}

// getkey and getter.

TEST(Getkey, WaitsForAKeyAndSilencesTheVoice) {
  GameRig rig;
  rig.plan({"wait 500", "press A"});
  std::vector<std::string> spoken;
  EXPECT_EQ(rig.timed([&](GameState&) { spoken = rig.spokenIn(getkey); }), 501);
  EXPECT_EQ(rig.g.lastKeyCode, "65");
  EXPECT_THAT(spoken, ElementsAre("purge"));
}

TEST(Getkey, ForgetsAKeyPressedBefore) {
  GameRig rig;
  rig.does("press A");
  rig.plan({"wait 500", "press B"});
  getkey(rig.g);
  EXPECT_EQ(rig.g.lastKeyCode, "66");
}

std::string typed(const std::vector<std::string>& keys) {
  GameRig rig;
  rig.plan({"wait 50"});
  for (const std::string& key : keys) rig.plan({"tap " + key});
  getter(rig.g, " Name? ");
  return rig.g.typedText;
}

TEST(Getter, ReturnsTheLine) {
  EXPECT_EQ(typed({"A", "B", "1", "Space", "C", "Enter"}), "ab1 c");
}

TEST(Getter, ReturnsAnEmptyLine) {
  EXPECT_EQ(typed({"Enter"}), "");
}

TEST(Getter, TurnsTheLetterAfterAShiftToUpperCase) {
  EXPECT_EQ(typed({"LeftShift", "A", "B", "Enter"}), "Ab");
  EXPECT_EQ(typed({"LeftShift", "LeftShift", "A", "A", "Enter"}), "Aa");
  EXPECT_EQ(typed({"LeftShift", "Grave", "Enter"}), "\xC0");
}

TEST(Getter, TakesBackTheLastCharacter) {
  EXPECT_EQ(typed({"A", "B", "Backspace", "C", "Enter"}), "ac");
  EXPECT_EQ(typed({"Backspace", "A", "Enter"}), "a");
}

TEST(Getter, UsesUpAPendingShiftWithBackspace) {
  EXPECT_EQ(typed({"A", "LeftShift", "Backspace", "B", "Enter"}), "b");
}

TEST(Getter, AppendsEveryOtherKeyAsTheCharacterOfItsCode) {
  EXPECT_EQ(typed({"Up", "F2", "Escape", "Enter"}), "&q\x1B");
}

TEST(Getter, StartsAnewAtF1WithoutThePendingShift) {
  EXPECT_EQ(typed({"A", "B", "F1", "C", "Enter"}), "c");
  EXPECT_EQ(typed({"LeftShift", "F1", "C", "Enter"}), "c");
}

TEST(Getter, RaisesTheEscapeFlagToo) {
  GameRig rig;
  rig.plan({"wait 50", "tap Escape", "tap Enter"});
  getter(rig.g, " Name? ");
  EXPECT_EQ(rig.g.escapePressed, 1);
}

TEST(Getter, EchoesWhatIsTypedAndTakenBack) {
  GameRig rig;
  rig.plan({"wait 50", "tap LeftShift", "tap A", "tap Backspace", "tap Backspace", "tap F1", "wait 50",
            "tap Enter"});
  std::vector<std::string> queued;
  for (const std::string& line : rig.spokenIn([](GameState& g) { getter(g, " Name? "); })) {
    if (line != "purge") queued.push_back(line);
  }
  EXPECT_THAT(queued, ElementsAre("queue  Name? ", "queue A", "queue A", "queue  Name? "));
}

}  // namespace
}  // namespace vorn
