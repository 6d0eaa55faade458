// The number of laps: typed, understood, confirmed.

#include <gmock/gmock.h>

#include "sessions/shell/story.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

const std::string kPrompt = "queue  Enter the number of laps that you wish to run. ";
const std::string kMainPrompt = "queue  Select. Exit Game. ";
const std::string kEngines = "say  Ladies and Gentlemen, Start Your Engines! ";

std::string question(const std::string& laps) {
  return "queue  Is " + laps + " correct for the number of laps to run?  yes ";
}

// What a key that is taken up sounds like: the prompt stops, the key is echoed.
Story heard(const std::string& character) {
  return Story{"purge"} + echoed(character);
}

class LapsEntry : public testing::Test {
 protected:
  // What is said and set from the prompt on.
  Story answering(const std::string& statements) {
    s.script(atLapsPrompt() + "echo here\n" + statements).run();
    EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
    return only(storyAfter(s.trace(), "here"), {"say ", "queue ", "purge", "voice ", "value "});
  }
  // The last thing that is said after `statements`.
  std::string leadsTo(const std::string& statements) {
    const Story told = speechIn(answering(statements + "wait 4000\n"));
    return told.empty() ? "" : told.back();
  }

  Session s;
};

TEST_F(LapsEntry, EchoesEveryKeyQuicker) {
  EXPECT_THAT(answering("type 12\n"), ElementsAreArray(heard("1") + heard("2")));
  for (const TraceLine& line : s.trace().of("speak")) {
    if (line.at("text") == "1" || line.at("text") == "2") {
      EXPECT_EQ(line.at("rate"), 5);
    }
  }
}

TEST_F(LapsEntry, AsksWhetherTheNumberIsRight) {
  EXPECT_THAT(
      answering("type 12\ntap Enter\nget lapsToRun\n"),
      ElementsAreArray(heard("1") + heard("2") + Story{"purge", question("12"), "value lapsToRun 12.0"}));
}

TEST_F(LapsEntry, UnderstandsNumbersAsTyped) {
  struct Typed {
    std::string statements, number;
  };
  const Typed typed[] = {
      {"type 1\n", "1"},
      {"type 9999\n", "9999"},
      {"type 007\n", "7"},
      {"type 2\ntap Delete\ntype 5\n", "2.5"},
      {"tap Delete\ntype 5\n", "0.5"},
      {"type 9999\ntap Delete\n", "9999"},
      {"tap Insert\ntype 3\n", "-3"},
      {"type 5 laps\n", "5"},
      {"tap Space\ntype 8\n", "8"},
      {"type 1e2\n", "100"},
      {"type 1d2\n", "100"},
      {"type 3\ntap Escape\n", "3"},
      {"type 12\ntap Backspace\n", "1"},
      {"tap Backspace\ntap Backspace\ntype 6\n", "6"},
      {"type 99\ntap F1\nwait 20\ntype 4\n", "4"},
  };
  for (const Typed& each : typed) {
    EXPECT_EQ(leadsTo(each.statements + "tap Enter\n"), question(each.number)) << each.statements;
  }
}

// The numeric keypad gives letters, the minus and period keys beyond ASCII: no numbers.
TEST_F(LapsEntry, GivesUpTheRaceWithoutANumber) {
  for (const char* statements :
       {"", "type 0\n", "type 000\n", "type abc\n", "type x5\n", "tap Escape\n", "tap Escape\ntype 5\n",
        "tap Insert\n", "tap Delete\n", "tap Numpad5\n", "tap Minus\ntype 5\n", "tap Period\ntype 5\n",
        "type 5\ntap Backspace\n", "tap Space\n"}) {
    s.script(atLapsPrompt() + statements +
             "echo here\ntap Enter\nwait 4000\nget escapePressed\nget lapsToRun\n")
        .run();
    EXPECT_EQ(s.exitStatus(), 0) << statements;
    const Story told = storyAfter(s.trace(), "here");
    EXPECT_THAT(speechIn(told), ElementsAre("purge", kMainPrompt)) << statements;
    EXPECT_THAT(only(told, {"wallLeftBuffer Stop", "sound9Buffer Stop"}), SizeIs(2)) << statements;
    EXPECT_EQ(answer(s.trace(), "escapePressed"), "0") << statements;
    EXPECT_EQ(answer(s.trace(), "lapsToRun"), "0.0") << statements;
    EXPECT_EQ(s.folder.read("vorn1log.txt").substr(0, kLogHeader.size()), kLogHeader);
    EXPECT_EQ(s.folder.read("vorn1log.txt").find("Your time"), std::string::npos);
  }
}

TEST_F(LapsEntry, TakesANumberThatNoRecordCouldBeFiledUnderForNone) {
  for (const char* typed : {"1E-16", "-1E9", "-1E300", "1E-300", "1E-9999"}) {
    Session session;
    std::string keys;
    for (const char* c = typed; *c != 0; ++c)
      keys += *c == '-' ? "tap Insert\n" : std::string("tap ") + *c + "\n";
    session.script(atLapsPrompt() + keys + "tap Enter\nwait say  Select. Exit Game. \n").run();
    EXPECT_EQ(session.exitStatus(), 0) << typed << session.diagnostics();
    EXPECT_FALSE(session.trace().said(" correct for the number of laps")) << typed;
  }
}

TEST_F(LapsEntry, AsksAgainAbove9999) {
  EXPECT_EQ(leadsTo("type 10000\ntap Enter\n"), kPrompt);
  EXPECT_EQ(leadsTo("type 9999\ntap Delete\ntype 5\ntap Enter\n"), kPrompt);
  EXPECT_EQ(leadsTo("type 1e9\ntap Enter\n"), kPrompt);
  EXPECT_EQ(leadsTo("type 10000\ntap Enter\nwait 20\ntype 9\ntap Enter\n"), question("9"));
}

TEST_F(LapsEntry, F1AsksAgainWithAnEmptyLine) {
  EXPECT_THAT(answering("type 12\ntap F1\nget typedText\n"),
              ElementsAreArray(heard("1") + heard("2") + Story{"purge", kPrompt, "value typedText "}));
}

TEST_F(LapsEntry, BackspaceSaysWhatItTakes) {
  EXPECT_THAT(answering("type 12\ntap Backspace\nget typedText\ntap Backspace\nget typedText\ntap Backspace\n"
                        "get typedText\n"),
              ElementsAreArray(heard("1") + heard("2") + heard("2") + Story{"value typedText 1"} +
                               heard("1") + Story{"value typedText ", "purge", "value typedText "}));
}

TEST_F(LapsEntry, ShiftMakesTheNextLetterACapital) {
  EXPECT_THAT(answering("tap LeftShift\ntap A\ntap A\ntap RightShift\ntap LeftShift\ntap B\nget typedText\n"),
              ElementsAreArray(Story{"purge"} + heard("A") + heard("a") + Story{"purge", "purge"} +
                               heard("B") + Story{"value typedText AaB"}));
}

TEST_F(LapsEntry, ShiftIsUsedUpByBackspaceAndForgottenByF1) {
  EXPECT_THAT(
      answering("type a\ntap LeftShift\ntap Backspace\ntype b\nget typedText\n"),
      ElementsAreArray(heard("a") + Story{"purge"} + heard("a") + heard("b") + Story{"value typedText b"}));
  EXPECT_THAT(answering("tap LeftShift\ntap F1\nwait 20\ntype b\nget typedText\n"),
              ElementsAreArray(Story{"purge", "purge", kPrompt} + heard("b") + Story{"value typedText b"}));
}

// Prompts are answered by keys alone.
TEST_F(LapsEntry, TakesNoAnswerFromTheController) {
  s.options.controller = true;
  s.script(atMainMenu() + toTrack(1, true) + "wait say  Enter the number\nwait 20\necho here\n" +
           "button 0 down\nwait 500\nbutton 0 up\naxis Y -10000\nwait 500\nbutton 8 down\nwait 500\n")
      .run();
  EXPECT_THAT(speechIn(storyAfter(s.trace(), "here")), IsEmpty());
}

// --- the confirmation ---

class LapsConfirmation : public LapsEntry {
 protected:
  // What is said and set from the question on.
  Story confirming(const std::string& statements) {
    s.script(atLapsPrompt() + "type 3\ntap Enter\nwait say  Is 3 correct\nwait 20\necho here\n" + statements)
        .run();
    EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
    return only(storyAfter(s.trace(), "here"), {"say ", "queue ", "purge", "voice ", "value "});
  }
};

TEST_F(LapsConfirmation, EnterAccepts) {
  EXPECT_THAT(confirming("tap Enter\nwait 3000\nget escapePressed\n"),
              ElementsAre("purge", kEngines, "value escapePressed 0"));
}

TEST_F(LapsConfirmation, ArrowsFlipTheAnswer) {
  EXPECT_THAT(confirming("tap Up\ntap Up\ntap Enter\nwait 3000\n"),
              ElementsAre("purge", "queue  no ", "purge", "queue  yes ", "purge", kEngines));
  EXPECT_THAT(confirming("tap Down\ntap Up\ntap Down\ntap Down\ntap Enter\nwait 3000\n"),
              ElementsAre("purge", "queue  no ", "purge", "queue  yes ", "purge", "queue  no ", "purge",
                          "queue  yes ", "purge", kEngines));
}

TEST_F(LapsConfirmation, NoAsksForTheNumberAgain) {
  EXPECT_THAT(confirming("tap Up\ntap Enter\nwait 3000\n"),
              ElementsAre("purge", "queue  no ", "purge", kPrompt));
  EXPECT_THAT(confirming("tap Down\ntap Enter\nwait 3000\ntype 4\ntap Enter\nwait 100\n"),
              ElementsAreArray(Story{"purge", "queue  no ", "purge", kPrompt} + heard("4") +
                               Story{"purge", question("4")}));
}

TEST_F(LapsConfirmation, YAndNAnswerAtOnceAndAreNotEchoed) {
  EXPECT_THAT(confirming("tap Y\nwait 3000\n"), ElementsAre("purge", kEngines));
  EXPECT_THAT(confirming("tap Up\ntap Y\nwait 3000\n"),
              ElementsAre("purge", "queue  no ", "purge", kEngines));
  EXPECT_THAT(confirming("tap N\nwait 3000\n"), ElementsAre("purge", kPrompt));
}

TEST_F(LapsConfirmation, F1IsIgnored) {
  EXPECT_THAT(confirming("tap F1\nwait 100\ntap Enter\nwait 3000\n"),
              ElementsAre("purge", "purge", kEngines));
  EXPECT_THAT(confirming("tap Up\ntap F1\ntap Enter\nwait 3000\n"),
              ElementsAre("purge", "queue  no ", "purge", "purge", kPrompt));
}

// The question is not asked again, and the answer stays what it was.
TEST_F(LapsConfirmation, OtherKeysAreEchoed) {
  EXPECT_THAT(confirming("tap X\ntap Space\ntap Left\nwait 100\ntap Enter\nwait 3000\n"),
              ElementsAreArray(heard("x") + heard(" ") + heard("%") + Story{"purge", kEngines}));
  EXPECT_THAT(confirming("tap Up\ntap X\ntap Enter\nwait 3000\n"),
              ElementsAreArray(Story{"purge", "queue  no "} + heard("x") + Story{"purge", kPrompt}));
}

TEST_F(LapsConfirmation, LowersAnEscapeThatWasTyped) {
  s.script(atLapsPrompt() +
           "type 3\ntap Escape\nget escapePressed\ntap Enter\nwait say  Is 3 correct\nwait 20\n"
           "tap Escape\nwait 20\ntap Enter\nwait 50\nget escapePressed\nwait 3000\n")
      .run();
  EXPECT_THAT(only(storyOf(s.trace()), {"value "}),
              ElementsAre("value escapePressed 1", "value escapePressed 0"));
  EXPECT_THAT(storyOf(s.trace()), Contains(kEngines));
}

// Escape while the track welcomes the driver is over when he has confirmed his laps.
TEST_F(LapsConfirmation, LowersAnEscapeFromBefore) {
  s.script(atMainMenu() + toTrack(1) + "tap Escape\nwait say  Enter the number\nwait 20\n" +
           "type 3\ntap Enter\nwait say  Is 3 correct\nwait 20\ntap Enter\nwait 3000\n")
      .run();
  EXPECT_THAT(storyOf(s.trace()), Contains(kEngines));
}

}  // namespace
}  // namespace vorn
