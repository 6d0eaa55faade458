// The joystick wizard, its reset, and the spoken list of the default buttons.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dialogue.h"

namespace vorn {
namespace {

using ::testing::ElementsAre;

const std::string kFile = "vorn1joy.cfg";

const Told kPrompts = {
    " Please turn the steering wheel to the left,  or move the joystick to the left.  the opposite of course "
    "will be to the right.",
    " Please step on the gas peddle or push the joystick forward. the opposite will be the brake.",
    " Please press the button for your speedometer and enter key. I use the fin behind the steering wheel on "
    "the left hand side.",
    " Please press the button for to have your track position spoken. I use the fin behind the steering "
    "wheel on the right hand side.",
    " Please press the button for to start your engine and reed your fuel gauge during the race. I use the "
    "upper left button on the steering wheel.",
    " Please press the button for to open pit road. I use the upper right button on the steering wheel.",
    " Please press the button to shift up one gear. I use, pulling the gear shift knob toward me.",
    " Please press the button to down shift one gear. I use, pushing the gear shift knob forward.",
    " Please press the button for to say the gear. I use the center button on the left hand side of the "
    "steering wheel.",
    " Please press the button for to say the lap. I use the center button on the right hand side of the "
    "steering wheel.",
    " Please press the button for the horn. I use the bottom button on the left hand side of the steering "
    "wheel.",
    "Please press the button to say the current elapse time of the race. I use the bottom button on the "
    "right hand side of the steering wheel.",
};

const Told kOk = {"say  ok "};
const Told kThanks = {"say  OK, thank you. "};
const Told kUsed = {
    "say  I'm sorry, but you have already used that button. You may press the escape key to end the joystick "
    "configuration."};
const Told kNotEnough = {
    "say  I'm sorry, but you have not configured enough of the joystick to be able to play the game. I am "
    "resetting the joystick back to the default settings.",
    "say  The joystick has been reset back to default settings."};
const std::string kDefaults = "0\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n1\r\n1\r\n";

/// The player with a controller before the wizard.
struct Wizard : Dialogue {
  Wizard() : Dialogue(" configure joystick ") { session.options.controller = true; }
};

/// Until step `step` (from 1) listens.
std::string listening(std::size_t step) {
  return "wait say " + kPrompts[step - 1] + "\nwait 220\n";
}
std::string moves(const std::string& axis) {
  return "axis " + axis + " -5000\nwait 20\naxis " + axis + " 0\n";
}
std::string presses(int button) {
  return "button " + std::to_string(button) + " down\nwait 20\nbutton " + std::to_string(button) + " up\n";
}

/// Answers steps `first` to `last`: X, Y, then buttons 20, 21, ... in the order of the questions.
std::string answers(std::size_t first, std::size_t last) {
  std::string script;
  for (std::size_t step = first; step <= last; ++step) {
    script += listening(step) + (step == 1   ? moves("X")
                                 : step == 2 ? moves("Y")
                                             : presses(17 + static_cast<int>(step)));
  }
  return script;
}

/// What those steps say: the prompt, silence when it is answered, and ok for the gas.
Told asked(std::size_t first, std::size_t last) {
  Told told;
  for (std::size_t step = first; step <= last; ++step) {
    told = told + Told{"queue " + kPrompts[step - 1], "purge"};
    if (step == 2) told = told + kOk;
  }
  return told;
}

/// The same with Escape at the last of them.
Told askedInVain(std::size_t first, std::size_t last) {
  return asked(first, last - 1) + Told{"queue " + kPrompts[last - 1], "purge"};
}

TEST(ConfigureJoystick, WithoutAControllerItSaysSo) {
  Dialogue dialogue(" configure joystick ");
  EXPECT_EQ(dialogue.play("", {"speak", "file"}), (Told{"say  Sorry, no joy stick was found. "}));
  EXPECT_FALSE(dialogue.session.folder.has(kFile));
}

TEST(ConfigureJoystick, TwelveAnswersAreSavedInTheOrderOfTheFile) {
  Wizard wizard;
  EXPECT_EQ(wizard.play(answers(1, 12), {"speak", "file"}),
            asked(1, 12) + kThanks + Told{"file write vorn1joy.cfg"});
  // Asked: speedometer, position, engine, pit, up, down, gear, lap, horn, time.
  EXPECT_EQ(wizard.file(kFile), "20\r\n21\r\n22\r\n23\r\n26\r\n27\r\n28\r\n29\r\n24\r\n25\r\n1\r\n1\r\n");
}

TEST(ConfigureJoystick, ButtonsCountFromZero) {
  Wizard wizard;
  EXPECT_EQ(wizard.play(answers(1, 2) + listening(3) + presses(0) + listening(4) + presses(0) + listening(4) +
                        presses(31) + answers(5, 12)),
            asked(1, 4) + kUsed + asked(4, 12) + kThanks);
  EXPECT_EQ(wizard.file(kFile), "0\r\n31\r\n22\r\n23\r\n26\r\n27\r\n28\r\n29\r\n24\r\n25\r\n1\r\n1\r\n");
}

TEST(ConfigureJoystick, TheNextStartUsesTheNewButtons) {
  Wizard wizard;
  wizard.play(answers(1, 12));
  wizard.scriptBeforeChoice = "button 28 down\nwait 20\nget btnHorn\nget joyMapUpShift\nbutton 28 up\n";
  wizard.play(listening(1) + keys("Escape"));
  EXPECT_THAT(wizard.answers("btnHorn"), ElementsAre("1"));
  EXPECT_THAT(wizard.answers("joyMapUpShift"), ElementsAre("24"));
}

TEST(ConfigureJoystick, EachPromptHasItsPauses) {
  Wizard wizard;
  // Moving before the second pause is over is not noticed.
  EXPECT_EQ(wizard.play("wait say " + kPrompts[0] + "\nwait 100\n" + moves("X") +
                        "wait 2000\nget joyCaptured\n" + keys("Escape")),
            askedInVain(1, 1) + kNotEnough);
  EXPECT_THAT(wizard.answers("joyCaptured"), ElementsAre("0"));
  EXPECT_NEAR(wizard.moments()[0], 3 + 201, 3);
}

TEST(ConfigureJoystick, OnlyAClearMoveToTheLeftOrForwardCounts) {
  Wizard wizard;
  wizard.play(listening(1) +
              "axis X 9000\nwait 20\naxis Rx 9000\nwait 20\naxis X -99\nwait 20\naxis Rx -99\nwait 20\n"
              "get joyCaptured\naxis Rx 0\naxis X -100\nwait 20\nget joyCapturedValue\naxis X 0\n" +
              listening(2) +
              "axis Y 9000\nwait 20\naxis X -9000\nwait 20\naxis Y -99\nwait 20\n"
              "get joyCaptured\naxis Y -100\nwait 20\nget joyCapturedValue\n" +
              listening(3) + keys("Escape"));
  EXPECT_THAT(wizard.answers("joyCaptured"), ElementsAre("0", "0"));
  EXPECT_THAT(wizard.answers("joyCapturedValue"), ElementsAre("1", "1"));
}

TEST(ConfigureJoystick, TheOtherAxesAreNumberTwo) {
  Wizard wizard;
  wizard.play(listening(1) + moves("Rx") + listening(2) + moves("Ry") + answers(3, 12));
  EXPECT_THAT(wizard.file(kFile), ::testing::EndsWith("\r\n2\r\n2\r\n"));
}

TEST(ConfigureJoystick, OfTwoAxesMovedTheFirstCounts) {
  Wizard wizard;
  // One move after the other within the first pause, so that both stand when the step listens.
  wizard.play("axis Rx -9000\naxis X -9000\n" + listening(1) +
              "axis X -9001\nwait 20\nget joyCapturedValue\n" + listening(2) + keys("Escape"));
  EXPECT_THAT(wizard.answers("joyCapturedValue"), ElementsAre("1"));
}

TEST(ConfigureJoystick, OfSeveralButtonsTheHighestCounts) {
  Wizard wizard;
  wizard.play(
      answers(1, 2) + "wait say " + kPrompts[2] +
      "\nbutton 5 down\nwait 230\nbutton 2 down\nwait 20\nget joyCapturedValue\nbutton 2 up\nbutton 5 up\n" +
      listening(4) + keys("Escape"));
  EXPECT_THAT(wizard.answers("joyCapturedValue"), ElementsAre("5"));
}

TEST(ConfigureJoystick, AButtonAlreadyGivenIsRefusedAndAskedAgain) {
  Wizard wizard;
  EXPECT_EQ(wizard.play(answers(1, 3) + listening(4) + presses(20) + answers(4, 11) + listening(12) +
                        presses(28) + listening(12) + presses(20) + answers(12, 12)),
            asked(1, 4) + kUsed + asked(4, 12) + kUsed + asked(12, 12) + kUsed + asked(12, 12) + kThanks);
  EXPECT_EQ(wizard.file(kFile), "20\r\n21\r\n22\r\n23\r\n26\r\n27\r\n28\r\n29\r\n24\r\n25\r\n1\r\n1\r\n");
}

TEST(ConfigureJoystick, AnyOtherKeyRepeatsTheStep) {
  for (const char* key : {"X", "Enter", "F1", "Y", "Up"}) {
    Wizard wizard;
    EXPECT_EQ(
        wizard.play(listening(1) + keys(key) + answers(1, 3) + listening(4) + keys(key) + answers(4, 12)),
        asked(1, 1) + asked(1, 4) + asked(4, 12) + kThanks)
        << key;
  }
}

TEST(ConfigureJoystick, EscapeUpToTheEighthStepBringsTheDefaultsBack) {
  for (std::size_t step = 1; step <= 8; ++step) {
    Wizard wizard;
    wizard.session.folder.write(kFile, "9\r\n8\r\n7\r\n6\r\n5\r\n4\r\n3\r\n2\r\n1\r\n0\r\n2\r\n2\r\n");
    EXPECT_EQ(wizard.play((step > 1 ? answers(1, step - 1) : "") + listening(step) + keys("Escape") +
                              "wait 20000\nget joyCaptureMode\n",
                          {"speak", "file"}),
              (askedInVain(1, step) + Told{kNotEnough[0], "file write vorn1joy.cfg", kNotEnough[1]}))
        << step;
    EXPECT_EQ(wizard.file(kFile), kDefaults) << step;
    EXPECT_THAT(wizard.answers("joyCaptureMode"), ElementsAre("0")) << step;
  }
}

TEST(ConfigureJoystick, EscapeFromTheNinthStepOnKeepsTheOtherButtons) {
  // What was saved before is saved again where the question was not reached.
  const std::string saved[] = {"20\r\n21\r\n22\r\n23\r\n4\r\n5\r\n6\r\n7\r\n24\r\n25\r\n1\r\n1\r\n",
                               "20\r\n21\r\n22\r\n23\r\n26\r\n5\r\n6\r\n7\r\n24\r\n25\r\n1\r\n1\r\n",
                               "20\r\n21\r\n22\r\n23\r\n26\r\n27\r\n6\r\n7\r\n24\r\n25\r\n1\r\n1\r\n",
                               "20\r\n21\r\n22\r\n23\r\n26\r\n27\r\n28\r\n7\r\n24\r\n25\r\n1\r\n1\r\n"};
  for (std::size_t step = 9; step <= 12; ++step) {
    Wizard wizard;
    EXPECT_EQ(wizard.play(answers(1, step - 1) + listening(step) + keys("Escape") + "get joyCaptureMode\n"),
              askedInVain(1, step) + kThanks)
        << step;
    EXPECT_EQ(wizard.file(kFile), saved[step - 9]) << step;
    EXPECT_THAT(wizard.answers("joyCaptureMode"), ElementsAre("0")) << step;
  }
}

/// The wizard from a menu that was driven by the controller; `ending` comes after the eleventh answer.
std::vector<std::string> textsAfterTheWizard(const std::string& ending) {
  Session session;
  session.options.controller = true;
  session
      .script(atMainMenu() + menuUp(8) + "button 0 down\nwait 400\nbutton 0 up\n" + answers(1, 11) +
              listening(12) + ending + "wait say  OK, thank you. \nwait 3000\naxis X 300\nwait 1000\n")
      .run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  std::vector<std::string> spoken = session.trace().spoken();
  return {std::find(spoken.begin(), spoken.end(), " OK, thank you. "), spoken.end()};
}

TEST(ConfigureJoystick, LeavesTheMenuAloneWhateverButtonIsStillHeld) {
  // Chosen by a button that was released while the wizard captured.
  EXPECT_THAT(textsAfterTheWizard(presses(0)), ElementsAre(" OK, thank you. "));
  // Ended by a key while the new enter button is held.
  EXPECT_THAT(textsAfterTheWizard("button 20 down\nwait 300\n" + keys("Escape")),
              ElementsAre(" OK, thank you. "));
}

TEST(ConfigureJoystick, NothingMovesButTheCaptureWhileItAsks) {
  Wizard wizard;
  wizard.play(listening(1) +
              "axis X -50\nwait 20\nget joySteering\nbutton 6 down\nwait 20\nget btnHorn\n"
              "button 6 up\naxis X 0\n" +
              keys("Escape"));
  EXPECT_THAT(wizard.answers("joySteering"), ElementsAre("0"));
  EXPECT_THAT(wizard.answers("btnHorn"), ElementsAre("0"));
}

TEST(ConfigureJoystick, ALostControllerIsTakenUpAgain) {
  Wizard wizard;
  EXPECT_EQ(
      wizard.play(listening(1) + "lost\naxis X -50\nwait 20\n" + moves("X") + listening(2) + keys("Escape")),
      askedInVain(1, 2) + kNotEnough);
}

TEST(ConfigureJoystick, AWindowClosedInTheMiddleSavesNothing) {
  Session session;
  session.options.controller = true;
  session.folder.write(kFile, kDefaults);
  session.script(atMainMenu() + menuUp(8) + menuEnter() + answers(1, 11) + listening(12) + "close\n").run();
  EXPECT_EQ(session.exitStatus(), 0);
  EXPECT_EQ(session.folder.read(kFile), kDefaults);
}

TEST(ResetJoystick, WritesTheDefaultsAndSaysSo) {
  Dialogue dialogue(" Reset joystick configuration ");
  dialogue.session.options.controller = true;
  dialogue.session.folder.write(kFile, "9\r\n8\r\n7\r\n6\r\n5\r\n4\r\n3\r\n2\r\n1\r\n0\r\n2\r\n2\r\n");
  EXPECT_EQ(dialogue.play("get joyMapSpeedometer\nget joySteeringAxis\n", {"speak", "file"}),
            (Told{"file write vorn1joy.cfg", "say  The joystick has been reset back to default settings."}));
  EXPECT_EQ(dialogue.file(kFile), kDefaults);
  EXPECT_THAT(dialogue.answers("joyMapSpeedometer"), ElementsAre("0"));
  EXPECT_THAT(dialogue.answers("joySteeringAxis"), ElementsAre("1"));
}

TEST(DefaultJoystick, IsReadAsOneText) {
  Dialogue dialogue(" reed default joystick configuration ");
  EXPECT_EQ(
      dialogue.play("", {"speak", "file"}),
      (Told{"purge",
            "queue Default joystick configuration. button 0 or the fin behind the steering wheel on the left "
            "hand side = speedometer and enter key. button 1 or the fin behind the steering wheel on the "
            "right hand side = track position. button 2 or the upper left hand button on the steering wheel "
            "= start your engine and fuel gauge. button 3 or the upper right hand button on the steering "
            "wheel = open pit road. button 4 or the center button on the left hand side of the steering "
            "wheel = say gear. button 5 or the center button on the right hand side of the steering wheel = "
            "say lap. button 6 or the bottom button on the left hand side of the steering wheel = horn. "
            "button 7 or the bottom button on the right hand side of the steering wheel = say current elapse "
            "race time. button 8 or pulling the gear shift knob towards you = up shift one gear. button 9 or "
            "pushing the gear shift knob away from you = down shift one gear. joystick axis x moving the "
            "joystick or steering wheel left or right = steering. joystick axis y moving the joystick "
            "forward or back or gas and brake peddle = gas or brake peddle."}));
}

}  // namespace
}  // namespace vorn
