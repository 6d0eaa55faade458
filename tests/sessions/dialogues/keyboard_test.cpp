// The keyboard wizard, its reset, and the spoken list of the default keys.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dialogue.h"
#include "platform/common/key_codes.h"

namespace vorn {
namespace {

using ::testing::ElementsAre;

const std::string kFile = "vorn1key.cfg";

const Told kPrompts = {
    " Please press the key for your speedometer by default it is theright shift key.",
    " Please press the key for to announce your track position.  By default it is the right control key.",
    " Please press the key for to start your engine and reed your fuel gauge. By default it is the lower "
    "center key of the six pack above the arrow keys, the end key.",
    " Please press the key to say the lap. By default it is the lower right key of the six pack above the "
    "arrow keys, the page down key.",
    " Please press the key for to open pit road. By default it is the Upper center key of the six pack above "
    "the arrow keys, the home key.",
    " please press the key to say current elapse race time. By default it is the Lower left key of the six "
    "pack above the arrow keys, the delete key.",
    " Please press the key to turn left. By default it is the left arrow key.",
    " Please press the key to turn right. By default it is the right arrow key.",
    " Please press the key to shift up one gear. By default it is the up arrow key.",
    " Please press the key to shift down one gear. By default it is the down arrow key.",
    " Please press the key for the gas peddle. By default it is the left control key.",
    " Please press the key for the brake peddle. By default it is the left shift key.",
    " Please press the key for to play the horn. By default it is the Upper left key of the six pack above "
    "the arrow keys, the insert key.",
    " Please press the key for to say gear. by default it is the Upper right key of the six pack above the "
    "arrow keys, the page up key.",
};

const Told kOk = {"say  ok "};
const Told kUsed = {"say  I'm sorry, but you have already used that key. Please try again."};
const std::string kDefaults =
    "54\r\n157\r\n207\r\n209\r\n199\r\n211\r\n203\r\n205\r\n200\r\n208\r\n29\r\n42\r\n28\r\n210\r\n201\r\n";

struct Wizard : Dialogue {
  Wizard() : Dialogue(" configure key board ") {}
};

std::string listening(std::size_t step) {
  return "wait say " + kPrompts[step - 1] + "\nwait 20\n";
}
/// Long enough for a look at all keys, which takes a millisecond a key here.
std::string holds(const std::string& key) {
  return "tap " + key + " 300\n";
}

/// Fourteen keys in the order of the questions. The two that move in menus stay what they were.
const Told kNewKeys = {"A", "B", "C", "D", "E", "F", "G", "H", "Up", "Down", "K", "L", "M", "N"};

std::string answers(std::size_t first, std::size_t last) {
  std::string script;
  for (std::size_t step = first; step <= last; ++step) script += listening(step) + holds(kNewKeys[step - 1]);
  return script;
}

Told asked(std::size_t first, std::size_t last) {
  Told told;
  for (std::size_t step = first; step <= last; ++step) {
    told = told + Told{"purge", "queue " + kPrompts[step - 1]} + kOk;
  }
  return told;
}

/// A question that is answered with a key that is not to be had.
Told refused(std::size_t step) {
  return Told{"purge", "queue " + kPrompts[step - 1]} + kUsed;
}

int codeOf(const std::string& key) {
  return keyByName(key)->keyCode;
}

/// The file with these keys in the order of the questions.
std::string fileOf(const Told& keys) {
  constexpr std::size_t kAfterBrake = 12;
  std::string bytes;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (i == kAfterBrake) bytes += "28\r\n";
    bytes += std::to_string(codeOf(keys[i])) + "\r\n";
  }
  return bytes;
}

TEST(ConfigureKeyboard, FourteenAnswersAreSavedWithEnterBetweenThem) {
  Wizard wizard;
  EXPECT_EQ(wizard.play(answers(1, 14), {"speak", "file"}),
            taken() + asked(1, 14) + Told{"file write vorn1key.cfg"});
  EXPECT_EQ(wizard.file(kFile), fileOf(kNewKeys));
  EXPECT_EQ(wizard.file(kFile),
            "30\r\n48\r\n46\r\n32\r\n18\r\n33\r\n34\r\n35\r\n200\r\n208\r\n37\r\n38\r\n28\r\n50\r\n49\r\n");
}

TEST(ConfigureKeyboard, TheDefaultKeysAreTakenToo) {
  Wizard wizard;
  const Told defaults = {"RightShift", "RightCtrl", "End",  "PageDown", "Home",      "Delete", "Left",
                         "Right",      "Up",        "Down", "LeftCtrl", "LeftShift", "Insert", "PageUp"};
  std::string script;
  for (std::size_t step = 1; step <= 14; ++step) script += listening(step) + holds(defaults[step - 1]);
  EXPECT_EQ(wizard.play(script), taken() + asked(1, 14));
  EXPECT_EQ(wizard.file(kFile), kDefaults);
}

TEST(ConfigureKeyboard, TheMenuMovesByTheNewShiftKeys) {
  Session session;
  session.script(atMainMenu() + menuUp(5) + menuEnter() + answers(1, 8) + listening(9) + holds("I") +
                 listening(10) + holds("J") + answers(11, 14));
  session.script("wait 600\ntap I\nwait 600\ntap J\nwait 600\ntap Up\nwait 600\n").run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  Told spoken = session.trace().spoken();
  spoken.erase(spoken.begin(), spoken.end() - 3);
  EXPECT_THAT(spoken, ElementsAre(" ok ", " reed default key board configuration ", " configure key board "));
}

TEST(ConfigureKeyboard, TheEnterThatOpenedItIsNoAnswer) {
  // Tapped, or held for anything less than two seconds.
  for (const char* more : {"0", "300", "1900"}) {
    Session session;
    session.script(atMainMenu() + menuUp(5) + "press Enter\nwait 60\nwait " + more + "\nrelease Enter\n" +
                   answers(1, 14) + "wait 300\n");
    session.run();
    EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
    EXPECT_FALSE(session.trace().said("already used")) << more;
    EXPECT_EQ(session.folder.read(kFile), fileOf(kNewKeys)) << more;
  }
}

TEST(ConfigureKeyboard, EnterHeldForeverIsRefusedAndNothingHangs) {
  Session session;
  session.script(atMainMenu() + menuUp(5) + "press Enter\nwait say already used that key\nrelease Enter\n" +
                 answers(1, 14) + "wait 300\n");
  session.run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  EXPECT_EQ(session.folder.read(kFile), fileOf(kNewKeys));
}

TEST(ConfigureKeyboard, EnterIsAlwaysRefused) {
  Wizard wizard;
  EXPECT_EQ(wizard.play(listening(1) + holds("Enter") + answers(1, 13) + listening(14) + holds("Enter") +
                        answers(14, 14)),
            taken() + refused(1) + asked(1, 13) + refused(14) + asked(14, 14));
}

TEST(ConfigureKeyboard, AKeyAlreadyGivenIsRefusedAndAskedAgain) {
  Wizard wizard;
  EXPECT_EQ(wizard.play(answers(1, 1) + listening(2) + holds("A") + answers(2, 13) + listening(14) +
                        holds("M") + listening(14) + holds("A") + answers(14, 14)),
            taken() + asked(1, 1) + refused(2) + asked(2, 13) + refused(14) + refused(14) + asked(14, 14));
  EXPECT_EQ(wizard.file(kFile), fileOf(kNewKeys));
}

TEST(ConfigureKeyboard, EscapeAndF1AreKeysLikeAnyOther) {
  Wizard wizard;
  Told chosen = kNewKeys;
  chosen[0] = "Escape";
  chosen[1] = "F1";
  chosen[2] = "NumpadEnter";
  EXPECT_EQ(wizard.play(listening(1) + holds("Escape") + listening(2) + holds("F1") + listening(3) +
                        holds("NumpadEnter") + answers(4, 14)),
            taken() + asked(1, 14));
  EXPECT_EQ(wizard.file(kFile), fileOf(chosen));
}

TEST(ConfigureKeyboard, OfTwoKeysTheHigherCodeCounts) {
  Wizard wizard;
  Told chosen = kNewKeys;
  chosen[1] = "Delete";
  ASSERT_GT(codeOf("Delete"), codeOf("B"));
  // Both are down before the look at the keys begins, and it comes to B first.
  EXPECT_EQ(wizard.play(listening(1) +
                        "press A\nwait say  ok \nrelease A\npress B\npress Delete\n"
                        "wait say  ok \nrelease B\nrelease Delete\n" +
                        answers(3, 14)),
            taken() + asked(1, 14));
  EXPECT_EQ(wizard.file(kFile), fileOf(chosen));
}

TEST(ConfigureKeyboard, WaitsForAKeyAsLongAsItTakes) {
  Wizard wizard;
  EXPECT_EQ(wizard.play(listening(1) + "wait 120000\n" + holds("A") + answers(2, 14)),
            taken() + asked(1, 14));
}

TEST(ConfigureKeyboard, TheNextStartUsesTheNewKeys) {
  Wizard wizard;
  wizard.play(answers(1, 14));
  Session nextDay;
  nextDay.folder.write(kFile, wizard.file(kFile));
  nextDay.script(atMainMenu() + "get keyMapGas\nget keyMapEnter\nget keyMapSayGear\n");
  const TraceRecord& trace = nextDay.run();
  EXPECT_EQ(trace.values("keyMapGas"), (std::vector<TraceValue>{codeOf("K")}));
  EXPECT_EQ(trace.values("keyMapEnter"), (std::vector<TraceValue>{28}));
  EXPECT_EQ(trace.values("keyMapSayGear"), (std::vector<TraceValue>{codeOf("N")}));
}

TEST(ConfigureKeyboard, AWindowClosedInTheMiddleSavesNothing) {
  Session session;
  session.folder.write(kFile, kDefaults);
  session.script(atMainMenu() + menuUp(5) + menuEnter() + answers(1, 13) + listening(14) + "close\n").run();
  EXPECT_EQ(session.exitStatus(), 0);
  EXPECT_EQ(session.folder.read(kFile), kDefaults);
}

TEST(ResetKeyboard, WritesTheDefaultsAndSaysSo) {
  Dialogue dialogue(" Reset key board configuration ");
  dialogue.session.folder.write(kFile, fileOf(kNewKeys));
  EXPECT_EQ(
      dialogue.play("get keyMapSpeedometer\n", {"speak", "file"}),
      (Told{"file write vorn1key.cfg", "say  The key board has been set back to the default settings. "}));
  EXPECT_EQ(dialogue.file(kFile), kDefaults);
  EXPECT_THAT(dialogue.answers("keyMapSpeedometer"), ElementsAre("54"));
}

TEST(DefaultKeyboard, IsReadAsOneText) {
  Dialogue dialogue(" reed default key board configuration ");
  EXPECT_EQ(
      dialogue.play("", {"speak", "file"}),
      (Told{"purge",
            "queue Default keyboard configuration. right shift key = speedometer. right control key = track "
            "position. Upper left key of the six pack above the arrow keys, the insert key = horn. Upper "
            "center key of the six pack above the arrow keys, the home key = open pit road. Upper right key "
            "of the six pack above the arrow keys, the page up key = say gear. Lower left key of the six "
            "pack above the arrow keys, the delete key = say current elapse race time. lower center key of "
            "the six pack above the arrow keys, the end key = start engine and fuel gauge. lower right key "
            "of the six pack above the arrow keys, the page down key = say lap. left arrow key = steering "
            "left. right arrow key = steering right. up arrow key = up shift one gear. down arrow key = down "
            "shift one gear. left control key = gas peddle. left shift key = brake peddle."}));
}

}  // namespace
}  // namespace vorn
