// The game options and the engine sound, with their samples and their file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dialogue.h"

namespace vorn {
namespace {

using ::testing::ElementsAre;

const std::string kFile = "vorn1ops.cfg";
const Told kSaved = {"file write vorn1ops.cfg"};
const std::vector<std::string> kEverything = {"speak", "sound", "file"};

// The options.

const Told kWallPrompt = {"queue  select, wall sound, crowd "};
const Told kWallQuestion = {"queue  Is this the sound that you wish to use for the wall sound? yes "};
const Told kSwitchPrompts = {"queue  select, automatic speedometer, on ",
                             "queue  select, automatic gear announce, on ",
                             "queue  select, pit road snacks, on ", "queue  select, track light polls, on "};

/// From the choice of a wall sound to where its question listens.
const std::string kWallHeard = "wait say for the wall sound?\nwait 20\n";

/// Questions 1 to 4, each answered with Enter.
Told switchesAccepted(std::size_t first = 1) {
  Told told;
  for (std::size_t i = first; i <= kSwitchPrompts.size(); ++i)
    told = told + Told{kSwitchPrompts[i - 1]} + taken();
  return told;
}

Told wallSampleHeard(const std::string& name) {
  return {"oneShotBuffer create " + name + ".wav",
          "oneShotBuffer SetCurrentPosition 0",
          "oneShotBuffer SetVolume 0",
          "oneShotBuffer SetFrequency 22051",
          "oneShotBuffer Play 0",
          "oneShotBuffer Stop",
          "oneShotBuffer release"};
}

TEST(ChangeOptions, EnterAllTheWayTakesTheFirstOfEverything) {
  Dialogue dialogue(" change game options ");
  dialogue.session.folder.write(kFile, "3\r\n2\r\n2\r\n2\r\n2\r\n5\r\n");
  EXPECT_EQ(dialogue.play(keys("Enter") + kWallHeard + keys("Enter Enter Enter Enter Enter"), kEverything),
            kWallPrompt + taken() + wallSampleHeard("vorn16") + kWallQuestion + taken() + switchesAccepted() +
                kSaved);
  EXPECT_EQ(dialogue.file(kFile), "1\r\n1\r\n1\r\n1\r\n1\r\n5\r\n") << "the engine sound stays";
}

TEST(ChangeOptions, EachWallSoundIsNamedAndHeard) {
  struct {
    const char* keys;
    Told moves;
    const char* sample;
    const char* saved;
  } const cases[] = {
      {"Down Enter", taken(" nature "), "vorn24", "2"},
      {"Down Down Enter", taken(" nature ") + taken(" wind "), "vorn23", "3"},
      {"Up Enter", taken(" wind "), "vorn23", "3"},
      {"Up Down Enter", taken(" wind ") + taken(" crowd "), "vorn16", "1"},
      {"Up Up Up Enter", taken(" wind ") + taken(" nature ") + taken(" crowd "), "vorn16", "1"}};
  for (const auto& c : cases) {
    Dialogue dialogue(" change game options ");
    EXPECT_EQ(dialogue.play(keys(c.keys) + kWallHeard + keys("Y Enter Enter Enter Enter"), kEverything),
              kWallPrompt + c.moves + taken() + wallSampleHeard(c.sample) + kWallQuestion + echoed("y") +
                  switchesAccepted() + kSaved)
        << c.keys;
    EXPECT_EQ(dialogue.file(kFile), std::string(c.saved) + "\r\n1\r\n1\r\n1\r\n1\r\n1\r\n") << c.keys;
  }
}

TEST(ChangeOptions, TheWallSampleComesAfterAPauseAndSoundsForAWhile) {
  Dialogue dialogue(" change game options ");
  dialogue.play(keys("Enter") + kWallHeard + keys("Enter Enter Enter Enter Enter"), kEverything);
  const auto& ms = dialogue.moments();
  EXPECT_EQ(ms[2] - ms[1], 301 + 3);  // 0.3 s, and the keys are forgotten
  EXPECT_EQ(ms[7] - ms[6], 1751);
}

TEST(ChangeOptions, AKeyThatMeansNothingStartsTheWallSoundsAgainWithoutAnEcho) {
  Dialogue dialogue(" change game options ");
  EXPECT_EQ(dialogue.play(keys("Down X Down F1 Down Escape Y N Enter") + kWallHeard +
                          keys("Enter Enter Enter Enter Enter")),
            kWallPrompt + taken(" nature ") + taken() +          //
                kWallPrompt + taken(" nature ") + taken() +      //
                kWallPrompt + taken(" nature ") + taken() +      //
                kWallPrompt + taken() + kWallPrompt + taken() +  //
                kWallPrompt + taken() + kWallQuestion + taken() + switchesAccepted());
  EXPECT_THAT(dialogue.file(kFile), ::testing::StartsWith("1\r\n"));
}

TEST(ChangeOptions, NoGoesBackToTheWallSounds) {
  for (const char* no : {"N", "Up Enter", "Down Enter"}) {
    Dialogue dialogue(" change game options ");
    dialogue.play(keys("Down Enter") + kWallHeard + keys(no) + "wait say wall sound, crowd\nwait 20\n" +
                  keys("Up Enter") + kWallHeard + keys("Enter Enter Enter Enter Enter"));
    EXPECT_EQ(dialogue.file(kFile), "3\r\n1\r\n1\r\n1\r\n1\r\n1\r\n") << no;
  }
}

TEST(ChangeOptions, TheWallQuestionTakesTheseKeys) {
  Dialogue dialogue(" change game options ");
  EXPECT_EQ(dialogue.play(keys("Enter") + kWallHeard + keys("Up F1 Down X Escape Up Up Enter") +
                          keys("Enter Enter Enter Enter")),
            kWallPrompt + taken() + kWallQuestion + taken(" no ") + taken() + kWallQuestion + taken(" no ") +
                echoed("x") + kWallQuestion + echoed("\x1b") + kWallQuestion + taken(" no ") +
                taken(" yes ") + taken() + switchesAccepted());
}

TEST(ChangeOptions, EachSwitchIsStoredInItsOwnLine) {
  for (int which = 1; which <= 4; ++which) {
    Dialogue dialogue(" change game options ");
    std::string pressed;
    Told told;
    for (int i = 1; i <= 4; ++i) {
      pressed += i == which ? "Down Enter " : "Enter ";
      told = told + Told{kSwitchPrompts[i - 1]} + (i == which ? taken(" off ") : Told{}) + taken();
    }
    EXPECT_EQ(dialogue.play(keys("Enter") + kWallHeard + keys("Enter " + pressed)),
              kWallPrompt + taken() + kWallQuestion + taken() + told);
    std::string expected = "1\r\n";
    for (int i = 1; i <= 4; ++i) expected += i == which ? "2\r\n" : "1\r\n";
    EXPECT_EQ(dialogue.file(kFile), expected + "1\r\n") << which;
  }
}

TEST(ChangeOptions, ASwitchFlipsBothWaysAndAnyOtherKeyTurnsItOnAgain) {
  Dialogue dialogue(" change game options ");
  const Told prompt = {kSwitchPrompts[0]};
  EXPECT_EQ(dialogue.play(keys("Enter") + kWallHeard +
                          keys("Enter Up Up Down Down Up X Up F1 Up Escape Y N Enter Enter Enter Enter")),
            kWallPrompt + taken() + kWallQuestion + taken() +                               //
                prompt + taken(" off ") + taken(" on ") + taken(" off ") + taken(" on ") +  //
                taken(" off ") + taken() + prompt + taken(" off ") + taken() +              //
                prompt + taken(" off ") + taken() + prompt + taken() + prompt + taken() +   //
                prompt + taken() + switchesAccepted(2));
  EXPECT_EQ(dialogue.file(kFile), "1\r\n1\r\n1\r\n1\r\n1\r\n1\r\n");
}

TEST(ChangeOptions, AreStoredQuestionByQuestionAndSavedAtTheEnd) {
  Session session;
  session.script(atMainMenu() + menuUp(3) + menuEnter() + keys("Down Enter") + kWallHeard +
                 keys("Enter Down Enter") +
                 "get wallSound\nget autoSpeedometer\nget autoGearAnnounce\nclose\n");
  const TraceRecord& trace = session.run();
  EXPECT_EQ(session.exitStatus(), 0);
  EXPECT_EQ(trace.values("wallSound"), (std::vector<TraceValue>{2}));
  EXPECT_EQ(trace.values("autoSpeedometer"), (std::vector<TraceValue>{2}));
  EXPECT_EQ(trace.values("autoGearAnnounce"), (std::vector<TraceValue>{1}));
  EXPECT_FALSE(session.folder.has(kFile));
}

TEST(ChangeOptions, AreThereAgainAtTheNextStart) {
  Dialogue dialogue(" change game options ");
  dialogue.play(keys("Up Enter") + kWallHeard + keys("Enter Up Enter Enter Up Enter Enter"));
  EXPECT_EQ(dialogue.file(kFile), "3\r\n2\r\n1\r\n2\r\n1\r\n1\r\n");
  Session nextDay;
  nextDay.folder.write(kFile, dialogue.file(kFile));
  nextDay.script(atMainMenu() +
                 "get wallSound\nget autoSpeedometer\nget pitRoadSnacks\nget trackLightPolls\n");
  const TraceRecord& trace = nextDay.run();
  EXPECT_EQ(trace.values("wallSound"), (std::vector<TraceValue>{3}));
  EXPECT_EQ(trace.values("autoSpeedometer"), (std::vector<TraceValue>{2}));
  EXPECT_EQ(trace.values("pitRoadSnacks"), (std::vector<TraceValue>{2}));
  EXPECT_EQ(trace.values("trackLightPolls"), (std::vector<TraceValue>{1}));
}

// The engine sound.

const Told kEngineQuestion = {"queue  Is this the engine sound that you wish to use? yes "};
const char* const kEngineSamples[] = {"vorn1", "vorn30", "vorn31", "vorn32", "vorn33", "vorn34"};
const std::string kEngineListens = "wait say  car engine number 1 \nwait 20\n";
const std::string kEngineHeard = "wait say  Is this the engine sound \nwait 20\n";

std::string engine(int number) {
  return " car engine number " + std::to_string(number) + " ";
}
Told enginePrompt(int number) {
  return {"say  select, ", "queue " + engine(number)};
}

TEST(ChangeEngine, EachNumberIsNamedHeardAndSaved) {
  for (int number = 1; number <= 6; ++number) {
    Dialogue dialogue(" change car engine sound ");
    dialogue.session.folder.write(kFile, "2\r\n2\r\n1\r\n2\r\n1\r\n4\r\n");
    std::string downs;
    Told moves;
    for (int i = 2; i <= number; ++i) {
      downs += "Down ";
      moves = moves + taken(engine(i));
    }
    const Told told =
        dialogue.play(kEngineListens + keys(downs + "Enter") + kEngineHeard + keys("Enter"), kEverything);
    const std::string create = std::string("engineBuffer create ") + kEngineSamples[number - 1] + ".wav";
    const Told expected = enginePrompt(1) + moves + taken() +
                          Told{create, "engineBuffer SetCurrentPosition 0", "engineBuffer SetVolume 0",
                               "engineBuffer SetFrequency 22051", "engineBuffer Play 0"} +
                          kEngineQuestion + taken() + kSaved;
    EXPECT_EQ(told, expected) << number;
    EXPECT_EQ(dialogue.file(kFile), "2\r\n2\r\n1\r\n2\r\n1\r\n" + std::to_string(number) + "\r\n");
  }
}

TEST(ChangeEngine, TheListWrapsBothWays) {
  Dialogue dialogue(" change car engine sound ");
  EXPECT_EQ(dialogue.play(kEngineListens + keys("Up Down Up Up Enter") + kEngineHeard + keys("Y")),
            enginePrompt(1) + taken(engine(6)) + taken(engine(1)) + taken(engine(6)) + taken(engine(5)) +
                taken() + kEngineQuestion + echoed("y"));
  EXPECT_EQ(dialogue.file(kFile), "1\r\n1\r\n1\r\n1\r\n1\r\n5\r\n");
}

TEST(ChangeEngine, AnyOtherKeyKeepsTheNumberAndIsNotEchoed) {
  Dialogue dialogue(" change car engine sound ");
  const std::string thirdNamed = "wait say " + engine(3) + "\nwait 20\n";
  std::string script = kEngineListens + keys("Down Down") + thirdNamed;
  Told told = enginePrompt(1) + taken(engine(2)) + taken(engine(3));
  for (const char* key : {"X", "F1", "Escape", "Y", "N"}) {
    script += keys(key) + thirdNamed;
    told = told + taken() + enginePrompt(3);
  }
  EXPECT_EQ(dialogue.play(script + keys("Enter") + kEngineHeard + keys("Enter")),
            told + taken() + kEngineQuestion + taken());
}

TEST(ChangeEngine, NoReplaysTheChoiceFromTheCurrentNumber) {
  for (const char* no : {"N", "Up Enter", "Down Enter"}) {
    Dialogue dialogue(" change car engine sound ");
    dialogue.play(kEngineListens + keys("Down Enter") + kEngineHeard + keys(no) +
                  "wait say  select, \nwait say " + engine(2) + "\nwait 20\n" + keys("Down Enter") +
                  kEngineHeard + keys("Enter"));
    EXPECT_EQ(dialogue.file(kFile), "1\r\n1\r\n1\r\n1\r\n1\r\n3\r\n") << no;
  }
}

TEST(ChangeEngine, TheQuestionTakesTheseKeys) {
  Dialogue dialogue(" change car engine sound ");
  EXPECT_EQ(dialogue.play(kEngineListens + keys("Enter") + kEngineHeard +
                          keys("Up F1 Down X Escape Down Up Enter")),
            enginePrompt(1) + taken() + kEngineQuestion + taken(" no ") + taken() + kEngineQuestion +
                taken(" no ") + echoed("x") + kEngineQuestion + echoed("\x1b") + kEngineQuestion +
                taken(" no ") + taken(" yes ") + taken());
}

TEST(ChangeEngine, TheNumberComesAfterAPause) {
  Dialogue dialogue(" change car engine sound ");
  dialogue.play(kEngineListens + keys("Enter") + kEngineHeard + keys("Enter"));
  EXPECT_EQ(dialogue.moments()[1] - dialogue.moments()[0], 60 * 7 + 201) << "after the words have been said";
}

TEST(ChangeEngine, TheSampleIsHeardToItsEnd) {
  Dialogue dialogue(" change car engine sound ");
  dialogue.play(kEngineListens + keys("Enter") + kEngineHeard + keys("Enter"), kEverything);
  const auto& ms = dialogue.moments();
  const double sampleMs = static_cast<double>(dialogue.file("vorn1.wav").size()) / 2 / 22.051;
  EXPECT_NEAR(ms[8] - ms[7], sampleMs + 201, 20) << "16 bits a frame, and 0.2 s after the end";
}

TEST(ChangeEngine, NothingIsSavedBeforeYes) {
  Session session;
  session.folder.write(kFile, "1\r\n1\r\n1\r\n1\r\n1\r\n4\r\n");
  session.script(atMainMenu() + menuUp(2) + menuEnter() + kEngineListens + keys("Down Enter") + kEngineHeard +
                 "get engineSound\nclose\n");
  session.run();
  EXPECT_EQ(session.trace().values("engineSound"), (std::vector<TraceValue>{2}));
  EXPECT_EQ(session.folder.read(kFile), "1\r\n1\r\n1\r\n1\r\n1\r\n4\r\n");
}

}  // namespace
}  // namespace vorn
