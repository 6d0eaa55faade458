// How the program ends.

#include <gmock/gmock.h>

#include <algorithm>
#include <ostream>

#include "records/records.h"
#include "sessions/shell/story.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;

const std::string kFarewell = " Thank you for playing Vorn 1 tts, By Ostrin. ";

// The main menu is left by its first entry.
std::string leaveGame() {
  return atMainMenu() + "echo leaving\n" + menuEnter() + "wait 60000\n";
}

TEST(Shutdown, SaysFarewellWholeAndThenThatItExits) {
  Session s;
  s.script(leaveGame()).run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_THAT(storyAfter(s.trace(), "leaving"),
              ElementsAre("purge", "queue " + kFarewell, "sound release", "keyboard release",
                          "say  exiting program ", "voice release", "end 0"));
  EXPECT_EQ(timeOf(s.trace(), "say  exiting program "),
            timeOf(s.trace(), "queue " + kFarewell) + spokenMs(kFarewell));
}

TEST(Shutdown, StartsTheLauncherAfterTheFarewell) {
  Session s;
  s.folder.write("arcadehub.exe", "");
  s.script(leaveGame()).run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_THAT(storyAfter(s.trace(), "leaving"),
              ElementsAre("purge", "queue " + kFarewell, "sound release", "keyboard release",
                          "program arcadehub.exe 3", "voice release", "end 0"));
  EXPECT_EQ(timeOf(s.trace(), "program arcadehub.exe 3"),
            timeOf(s.trace(), "queue " + kFarewell) + spokenMs(kFarewell));
}

TEST(Shutdown, FindsTheLauncherWhateverItsCase) {
  Session s;
  s.folder.write("ArcadeHub.EXE", "");
  s.script(leaveGame()).run();
  EXPECT_THAT(only(storyOf(s.trace()), {"program"}), ElementsAre("program ArcadeHub.EXE 3"));
  EXPECT_FALSE(s.trace().said("exiting program"));
}

TEST(Shutdown, ReleasesEverythingInOrder) {
  Session s;
  s.options.controller = true;
  s.script(atMainMenu() + toTrack(1, true) + enterLaps("1") + startOnKeyboard() +
           "wait tick 3\necho leaving\nclose\nwait 60000\n")
      .run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_THAT(storyAfter(s.trace(), "leaving"), ElementsAreArray(Story{"purge",
                                                                       "queue " + kFarewell,
                                                                       "engineBuffer release",
                                                                       "sound19Buffer release",
                                                                       "wallLeftBuffer release",
                                                                       "wallRightBuffer release",
                                                                       "sound4Buffer release",
                                                                       "markBuffer release",
                                                                       "sound29Buffer release",
                                                                       "sound18Buffer release",
                                                                       "sound9Buffer release",
                                                                       "hornBuffer release",
                                                                       "sound10Buffer release",
                                                                       "sound8Buffer release",
                                                                       "oneShotBuffer release",
                                                                       "warnBuffer release",
                                                                       "sound release",
                                                                       "controller Unacquire",
                                                                       "controller release",
                                                                       "keyboard release",
                                                                       "say  exiting program ",
                                                                       "voice release",
                                                                       "end 0"}));
}

TEST(Shutdown, FromEachMenu) {
  Session s;
  s.options.controller = true;
  // The device question offers no way out; the other three menus do.
  s.script(atMainMenu() + menuUp() + menuEnter() + "wait say  Select, joystick \nwait 550\n" + menuDown() +
           menuEnter() + "wait say  Select the track\nwait 550\n" + menuUp() + "echo leaving\n" +
           menuEnter() + "wait 60000\n")
      .run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_EQ(s.trace().spoken().back(), " exiting program ");
  EXPECT_THAT(speechIn(storyAfter(s.trace(), "leaving")),
              ElementsAre("purge", "queue " + kFarewell, "say  exiting program "));
}

TEST(Shutdown, NeedsNoSoundThatWasNeverLoaded) {
  Session s;
  s.script("wait 2\nclose\nwait 60000\n").run();  // while the title sound is about to start
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_THAT(only(storyOf(s.trace()), {"oneShotBuffer"}), ElementsAre());
  EXPECT_TRUE(s.trace().said(kFarewell));
}

// --- the window is closed ---

TEST(Close, BeforeThereIsAVoiceEndsInSilence) {
  Session s;
  s.script("close\nwait 60000\n").run();  // at the first yield, before the voice is there
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_THAT(s.trace().of("speak"), ElementsAre());
  EXPECT_FALSE(s.folder.has("vorn1log.txt"));
}

TEST(Close, ASecondOneEndsAtOnce) {
  Session s;
  s.script(atMainMenu() + "close\nwait 500\nclose\n").run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_TRUE(s.trace().said(kFarewell));
  EXPECT_FALSE(s.trace().said("exiting program"));
  EXPECT_LT(timeOf(s.trace(), "end 0"), timeOf(s.trace(), "queue " + kFarewell) + 510);
}

TEST(Close, DuringTheOrdinaryFarewellIsTheFirst) {
  Session s;
  s.folder.write("arcadehub.exe", "");
  s.script(leaveGame().substr(0, leaveGame().rfind("wait")) + "wait 500\nclose\nwait 60000\n").run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_THAT(storyOf(s.trace()), Contains("program arcadehub.exe 3"));
  EXPECT_GE(timeOf(s.trace(), "program arcadehub.exe 3"),
            timeOf(s.trace(), "queue " + kFarewell) + spokenMs(kFarewell));
}

TEST(Close, ASecondOneDuringTheOrdinaryFarewellEndsAtOnce) {
  Session s;
  s.script(leaveGame().substr(0, leaveGame().rfind("wait")) + "wait 500\nclose\nwait 100\nclose\n").run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_FALSE(s.trace().said("exiting program"));
}

/// A place where the window may be closed, and the way there.
struct Moment {
  std::string name;
  std::string way;
  bool hasController = false;
};

void PrintTo(const Moment& moment, std::ostream* stream) {
  *stream << moment.name;
}

class CloseAt : public testing::TestWithParam<Moment> {};

// Wherever it happens: the voice stops and says farewell, and nothing is kept of what was going on.
TEST_P(CloseAt, EndsInOrderAndWritesNothing) {
  Session s;
  s.options.controller = GetParam().hasController;
  const Story before = s.folder.names();
  s.script(GetParam().way + "echo closing\nclose\nwait 60000\n").run();
  EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
  const Story ending = storyAfter(s.trace(), "closing");
  EXPECT_THAT(speechIn(ending), ElementsAre("purge", "queue " + kFarewell, "say  exiting program "));
  EXPECT_THAT(only(ending, {"read ", "write ", "append ", "delete "}), ElementsAre());
  EXPECT_EQ(ending.back(), "end 0");
  Story after = s.folder.names();
  if (std::erase(after, "vorn1log.txt") > 0) {
    EXPECT_EQ(s.folder.read("vorn1log.txt"), kLogHeader);
  }
  EXPECT_EQ(after, before);
}

// From the open main menu into its entry `number`.
std::string entry(int number) {
  return atMainMenu() + menuDown(number - 1) + menuEnter();
}

std::string atEngines() {
  return atMainMenu() + toTrack(1) + enterLaps("1") +
         "wait say  Ladies and Gentlemen, Start Your Engines! \nwait 50\n";
}

const Moment kMoments[] = {
    {"TitleSound", "wait 500\n"},
    {"MainMenu", atMainMenu()},
    {"Instructions", entry(2) + "wait 3000\n"},
    {"TrackDescriptions", entry(3) + "wait 3000\n"},
    {"ReadingTheLog", entry(4) + "wait say Vorn 1 log for\nwait 100\n"},
    {"DeletingTheLog", entry(5) + "wait say  Are you sure\nwait 100\ntap Up\nwait 100\n"},
    {"ResettingRecords",
     entry(7) + "wait say  select the track record\nwait 100\ntap Enter\nwait 100\ntap Up\n"},
    {"ChoosingAVoice", entry(8) + "wait say  do you wish to use this voice\nwait 100\n"},
    {"RateOfSpeech", entry(9) + "wait say to adjust the speech rate\nwait 100\ntap Up\n"},
    {"VolumeOfTheVoice", entry(10) + "wait say  use the up and down arrow keys\nwait 100\ntap Down\n"},
    {"VolumeOfTheSounds",
     entry(10) + "wait say  use the up and down arrow keys\nwait 100\ntap Enter\nwait 1600\n"},
    {"SpeakerTest", entry(11) + "wait say left speaker\nwait 250\n"},
    {"JoystickWizard",
     entry(13) + "wait say  Please turn the steering wheel\nwait 300\naxis X -5000\nwait 100\naxis X 0\n"
                 "wait say  Please step on the gas\nwait 300\n",
     true},
    {"KeyboardWizard",
     entry(16) + "wait say  Please press the key for your speedometer\nwait 50\ntap A 600\n"},
    {"Options",
     entry(18) + "wait say  select, wall sound\nwait 50\ntap Down\nwait 50\ntap Enter\nwait 500\n"},
    {"EngineSound",
     entry(19) + "wait say car engine number 1\nwait 50\ntap Down\nwait 50\ntap Enter\nwait 300\n"},
    {"DeviceQuestion", atMainMenu() + menuUp() + menuEnter() + "wait say  Select, joystick \nwait 550\n",
     true},
    {"TrackMenu", atMainMenu() + menuUp() + menuEnter() + "wait say  Select the track\nwait 550\n"},
    {"LapsPrompt", atLapsPrompt() + "type 12\n"},
    {"LapsConfirmation", atLapsPrompt() + "type 12\ntap Enter\nwait say  Is 12 correct\n"},
    {"WaitingForTheEngine", atEngines()},
    {"Cranking", atEngines() + "tap End 200\nwait 500\n"},
    {"Countdown", atEngines() + "tap End 200\nwait say  5 \n"},
    {"JumpedStart", atEngines() + "tap End 200\nwait say  5 \npress Up\nwait 200\n"},
    {"AfterTheHorn", atEngines() + "tap End 200\nwait say  1 \nwait 1500\n"},
    {"Racing", atMainMenu() + toTrack(1) + enterLaps("1") + startOnKeyboard() + "wait tick 20\n"},
    {"Crashing", atMainMenu() + toTrack(1) + enterLaps("1") + startOnKeyboard() +
                     "wait tick 20\nset forceCrash 1\nset lateralPosition 100\nwait 500\n"},
};

INSTANTIATE_TEST_SUITE_P(Moments, CloseAt, testing::ValuesIn(kMoments),
                         [](const testing::TestParamInfo<Moment>& moment) { return moment.param.name; });

// A race that is over is over, but nobody has set a record yet.
TEST(Close, WhileTheFinishIsCelebratedTheRaceIsLost) {
  Session s;
  s.script(raceOver() + "wait 300\nclose\nwait 60000\n").run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_EQ(s.folder.read("vorn1log.txt"), kLogHeader);
  EXPECT_FALSE(s.folder.has("vorn1maple0001.rec"));
}

/// The holder of the record that a window closed at `where` leaves, from the prompt for the name on.
std::string holderAfterClosing(const std::string& where) {
  Session s;
  s.script(raceOver() + finish({}) + "wait say  Enter your name\n" + where + "close\nwait 60000\n").run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_TRUE(
      s.folder.read("vorn1log.txt").ends_with(" You finished the race with 20.5 gallons of fuel. \r\n"));
  EXPECT_THAT(s.folder.read("vorn1records.txt"), testing::HasSubstr("1 minute 15 point 5 0 0"));
  EXPECT_EQ(storyOf(s.trace()).back(), "end 0");
  return decodeRecord(s.folder.read("vorn1maple0001.rec")).value_or(TrackRecord{}).holder;
}

TEST(Close, AtTheNameKeepsTheRecordUnderWhatHasBeenTyped) {
  EXPECT_EQ(holderAfterClosing(""), "");
  EXPECT_EQ(holderAfterClosing("wait 20\ntype bo\n"), "bo");
  EXPECT_EQ(holderAfterClosing("wait 20\ntype bob\ntap Enter\nwait say  correct\nwait 20\n"), "bob");
}

TEST(Close, AfterTheRecordItStays) {
  Session s;
  s.script(raceOver() + finish({}) +
           "wait say  Enter your name\nwait 20\ntype bo\ntap Enter\nwait say  correct\nwait 20\ntap Enter\n"
           "wait say  Select, repeat race time\nclose\nwait 60000\n")
      .run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_EQ(s.folder.read("vorn1maple0001.rec").size(), 26u + 4 * 2);
  EXPECT_TRUE(s.folder.has("vorn1records.txt"));
}

}  // namespace
}  // namespace vorn
