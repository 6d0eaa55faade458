// The four spoken menus: what they say, how they move, and where their entries lead.

#include <gmock/gmock.h>

#include <algorithm>

#include "sessions/shell/story.h"

namespace vorn {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Ge;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

const Story kTrackEntries = {"Maple Leaf Tri Oval Track",
                             "Painsville Oval Track",
                             "Chagrin River Speedway",
                             "Ohio Motor Speedway",
                             "Chardon Hill Top Raceway",
                             "Erie Lake Front Motor Speedway",
                             "Mentor Road Race Track",
                             "Kirtland Dirt Mile Oval Track",
                             "Chesterland Dirt Road Race Track",
                             "Geneva Oval Track",
                             " Go to main menu ",
                             " Exit Game "};

const std::string kMainPrompt = " Select. Exit Game. ";
const std::string kTrackPrompt = " Select the track you wish to run, Maple Leaf Try Oval ";

std::string atTrackMenu() {
  return atMainMenu() + menuUp() + menuEnter() + "wait say  Select the track you wish to run,\nwait 550\n";
}

std::string atDeviceQuestion() {
  return atMainMenu() + menuUp() + menuEnter() + "wait say  Select, joystick \nwait 550\n";
}

// Each move silences the voice and says the entry.
Story movesOver(const Story& entries) {
  Story told;
  for (const std::string& entry : entries) {
    told.push_back("purge");
    told.push_back("queue " + entry);
  }
  return told;
}

// All entries as they come, from entry 1 around to it again.
Story downward(Story entries) {
  std::rotate(entries.begin(), entries.begin() + 1, entries.end());
  return entries;
}

Story upward(const Story& entries) {
  return {entries.rbegin(), entries.rend()};
}

// Runs and returns what is said after "echo here".
Story saidAfterMark(Session& s, const std::string& before, const std::string& after) {
  s.script(before + "echo here\n" + after).run();
  EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
  return speechIn(storyAfter(s.trace(), "here"));
}

// Milliseconds between one text and the next, all of those that `script` moves through.
std::vector<std::int64_t> pausesBetweenMoves(Session& s, const std::string& script) {
  s.script(script).run();
  std::vector<std::int64_t> times, pauses;
  for (const TraceLine& line : s.trace().of("speak")) {
    if (line.at("flags") == 1) times.push_back(line.at("ms"));
  }
  for (std::size_t i = 2; i < times.size(); ++i) pauses.push_back(times[i] - times[i - 1]);
  return pauses;
}

// --- the main menu ---

TEST(MainMenu, OpensOnExitGame) {
  Session s;
  EXPECT_THAT(saidAfterMark(s, atMainMenu(), "tap Up\nwait 550\ntap Down\nwait 550\n"),
              ElementsAre("purge", "queue  Start Game. ", "purge", "queue  Exit Game. "));
}

TEST(MainMenu, GoesDownAndAroundItsTwentyEntries) {
  Session s;
  EXPECT_THAT(saidAfterMark(s, atMainMenu(), menuDown(20)),
              ElementsAreArray(movesOver(downward(mainMenuEntries()))));
}

TEST(MainMenu, GoesUpAndAroundItsTwentyEntries) {
  Session s;
  EXPECT_THAT(saidAfterMark(s, atMainMenu(), menuUp(20)),
              ElementsAreArray(movesOver(upward(mainMenuEntries()))));
}

TEST(MainMenu, StepsEveryFifthOfASecondWhileAKeyIsHeld) {
  for (const char* key : {"Up", "Down"}) {
    Session s;
    const auto pauses = pausesBetweenMoves(s, atMainMenu() + "press " + key + "\nwait 3000\n");
    EXPECT_THAT(pauses, SizeIs(14)) << key;
    EXPECT_THAT(pauses, Each(202)) << key;  // 201 ms of pause and one look
  }
}

TEST(MainMenu, StepsEveryHalfSecondWhileTheStickIsHeld) {
  for (const char* value : {"-5556", "-10000", "5556", "10000"}) {
    Session s;
    s.options.controller = true;
    const auto pauses = pausesBetweenMoves(s, atMainMenu() + "axis Y " + value + "\nwait 3000\n");
    EXPECT_THAT(pauses, SizeIs(5)) << value;
    EXPECT_THAT(pauses, Each(503)) << value;  // two pauses and one look
  }
}

TEST(MainMenu, TakesTheStickOnlyBeyondItsThreshold) {
  Session s;
  s.options.controller = true;
  EXPECT_THAT(saidAfterMark(s, atMainMenu(), "axis Y -5555\nwait 1000\naxis Y 5555\nwait 1000\n"), IsEmpty());
  EXPECT_THAT(saidAfterMark(s, atMainMenu(), "axis Y -5556\nwait 320\naxis Y 0\nwait 500\n"),
              ElementsAre("purge", "queue  Start Game. "));
  EXPECT_THAT(saidAfterMark(s, atMainMenu(), "axis Y 5556\nwait 320\naxis Y 0\nwait 500\n"),
              ElementsAre("purge", "queue  Reed Instructions. "));
}

// The axis that the map names is the one that counts.
TEST(MainMenu, TakesTheStickOfTheMap) {
  Session s;
  s.options.controller = true;
  s.folder.write("vorn1joy.cfg", "0\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n1\r\n2\r\n");
  EXPECT_THAT(saidAfterMark(s, atMainMenu(),
                            "axis Y -10000\nwait 1000\naxis Ry -9000\nwait 320\naxis Ry 0\n"
                            "wait 500\n"),
              ElementsAre("purge", "queue  Start Game. "));
}

TEST(MainMenu, OfSeveralThingsAskedForTheLastInOrderCounts) {
  struct Case {
    const char* what;
    const char* statements;
    std::string said;    ///< first after it
    std::int64_t pause;  ///< milliseconds until the voice is silenced
  };
  const std::string up = " Start Game. ", down = " Reed Instructions. ";
  // A key is read before the look's yield, the controller comes in it.
  const Case cases[] = {
      {"select and up", "press Enter\npress Up\n", up, 1},
      {"select and down", "press Enter\npress Down\n", down, 1},
      {"up and down", "press Up\npress Down\n", down, 1},
      {"button and up", "press Up\nwait 1\nbutton 0 down\n", up, 302},
      {"button and stick", "button 0 down\naxis Y -9000\n", up, 602},
      {"stick up and key down", "press Down\nwait 1\naxis Y -9000\n", down, 302},
      {"stick down and key up", "press Up\nwait 1\naxis Y 9000\n", down, 302},
      {"everything", "press Enter\npress Up\npress Down\nwait 1\nbutton 0 down\naxis Y 9000\nbutton 8 down\n",
       kMainPrompt, 904},
  };
  for (const Case& c : cases) {
    Session s;
    s.options.controller = true;
    const Story said = saidAfterMark(s, atMainMenu(), std::string(c.statements) + "wait 950\n");
    ASSERT_THAT(said, SizeIs(Ge(2u))) << c.what;
    EXPECT_EQ(said[1], "queue " + c.said) << c.what;
    EXPECT_EQ(timesOf(s.trace(), "purge").front() - timeOf(s.trace(), "echo here"), c.pause) << c.what;
  }
}

// What is pressed during the pauses of one look counts for its later tests.
TEST(MainMenu, LooksAtTheStickWhenItsTurnComes) {
  Session s;
  s.options.controller = true;
  // The button alone would select; within its 0.3 s the stick is pushed and the button let go.
  EXPECT_THAT(saidAfterMark(s, atMainMenu(),
                            "button 0 down\nwait 100\naxis Y -9000\nbutton 0 up\nwait 550\n"
                            "axis Y 0\nwait 300\n"),
              ElementsAre("purge", "queue  Start Game. "));
}

TEST(MainMenu, GoesBackToTheTopByTheShiftButton) {
  Session s;
  s.options.controller = true;
  EXPECT_THAT(saidAfterMark(s, atMainMenu() + menuDown(4),
                            "button 8 down\nwait 320\nbutton 8 up\nwait 550\ntap Up\nwait 300\n"),
              ElementsAre("purge", "queue " + kMainPrompt, "purge", "queue  Start Game. "));
  EXPECT_EQ(timesOf(s.trace(), "queue " + kMainPrompt).back(), timeOf(s.trace(), "echo here") + 301)
      << "the prompt follows at once";
}

TEST(MainMenu, SelectsByTheSpeedometerButton) {
  Session s;
  s.options.controller = true;
  const Story said = saidAfterMark(s, atMainMenu(), "button 0 down\nwait 60000\n");
  EXPECT_THAT(said, ElementsAre("purge", "queue  Thank you for playing Vorn 1 tts, By Ostrin. ",
                                "say  exiting program "));
}

TEST(MainMenu, SelectsTheFirstEntryWhileThePromptIsSpoken) {
  Session s;
  s.script("wait say  Select. Exit Game. \nwait 250\nget voiceIndex\ntap Enter\nwait 60000\n").run();
  EXPECT_EQ(s.exitStatus(), 0);
  const std::int64_t asked = timeOf(s.trace(), "queue " + kMainPrompt);
  const std::int64_t farewell = timeOf(s.trace(), "queue  Thank you for playing Vorn 1 tts, By Ostrin. ");
  EXPECT_LT(farewell, asked + spokenMs(kMainPrompt));
}

TEST(MainMenu, AnswersAQuickTapOfItsFirstFifthOfASecondAfterIt) {
  Session s;
  EXPECT_THAT(saidAfterMark(s, "wait say  Select. Exit Game. \n", "tap Up 30\nwait 500\n"),
              ElementsAre("purge", "queue  Start Game. "));
}

TEST(MainMenu, AnswersEveryTapOfAQuickFinger) {
  for (const char* const held : {"10", "20", "30", "60", "90"}) {
    Session s;
    const std::string tap = std::string("tap Down ") + held + "\nwait 190\n";
    EXPECT_THAT(saidAfterMark(s, atMainMenu(), tap + tap + tap + "wait 500\n"),
                ElementsAre("purge", "queue  Reed Instructions. ", "purge", "queue  reed track descriptions ",
                            "purge", "queue  reed log file "))
        << held;
  }
}

TEST(MainMenu, DoesNotTakeTheKeyThatHasAnsweredAPromptForAChoice) {
  Session s;  // the last answer of the options, released before the menu listens again
  EXPECT_THAT(
      saidAfterMark(s, atMainMenu() + menuDown(4) + menuEnter() + "wait say  Are you sure\nwait 100\n",
                    "tap Enter 20\nwait 1000\n"),
      ElementsAre("purge"));
}

TEST(MainMenu, HearsKeysWithoutTheFocus) {
  Session s;  // the state of the keyboard is read, whoever has the focus
  EXPECT_THAT(saidAfterMark(s, atMainMenu() + "focus off\n", "tap Down\nwait 300\n"),
              ElementsAre("purge", "queue  Reed Instructions. "));
}

TEST(MainMenu, DoesNotMindOtherKeys) {
  Session s;
  EXPECT_THAT(saidAfterMark(s, atMainMenu(),
                            taps("Escape F1 Y N Left Right Space LeftShift NumpadEnter Home") + "wait 300\n"),
              IsEmpty());
}

// Enter and the two shift keys of the keyboard map are the keys of the menus.
TEST(MainMenu, FollowsTheKeyboardMap) {
  Session s;
  s.folder.write(
      "vorn1key.cfg",
      "54\r\n157\r\n207\r\n209\r\n199\r\n211\r\n203\r\n205\r\n30\r\n48\r\n29\r\n42\r\n46\r\n210\r\n201\r\n");
  s.script(atMainMenu() + "echo the usual keys\n" + taps("Up Down Enter") +
           "wait 300\necho the keys of the map\n" + "tap A\nwait 300\ntap B\nwait 300\ntap C\nwait 60000\n")
      .run();
  EXPECT_THAT(speechIn(storyAfter(s.trace(), "the usual keys", "the keys of the map")), IsEmpty());
  EXPECT_THAT(speechIn(storyAfter(s.trace(), "the keys of the map")),
              ElementsAre("purge", "queue  Start Game. ", "purge", "queue  Exit Game. ", "purge",
                          "queue  Thank you for playing Vorn 1 tts, By Ostrin. ", "say  exiting program "));
}

TEST(MainMenu, RunsWhatTheEntryPromises) {
  const std::string first[] = {
      "",  // leaves the game
      "queue Vorn 1 tts instructions. ",
      "queue  Select, track description that you wish to read. ",
      "queue  ",  // the first line of the log
      "queue  Are you sure that you want to delete the log file? no ",
      "say  Sorry, but there was no records file to reed. ",
      "queue  select the track record to reset, all ",
      "say  ",  // a new voice gets ready
      "queue to adjust the speech rate, use the arrow keys and then press enter",
      "queue  use the up and down arrow keys to raise and lower the volume of the voice. ",
      "say  The next sound that you hear will come out of the left speaker. ",
      "queue Default joystick configuration. ",
      "say  Sorry, no joy stick was found. ",
      "say  The joystick has been reset back to default settings.",
      "queue Default keyboard configuration. ",
      "queue  Please press the key for your speedometer by default it is theright shift key.",
      "say  The key board has been set back to the default settings. ",
      "queue  select, wall sound, crowd ",
      "say  select, ",
      "queue  Select the track you wish to run, Maple Leaf Try Oval ",
  };
  for (int number = 2; number <= 20; ++number) {
    Session s;
    const std::string move = number <= 11 ? menuDown(number - 1) : menuUp(21 - number);
    Story said = saidAfterMark(s, atMainMenu() + move, menuEnter() + "wait 1500\n");
    std::erase(said, "purge");
    ASSERT_FALSE(said.empty()) << number;
    EXPECT_THAT(said.front(), StartsWith(first[number - 1])) << number;
  }
}

TEST(MainMenu, StandsWhereItWasAfterAnEntryHasRun) {
  Session s;
  // The reset speaks, then the menu is silent until the next move.
  EXPECT_THAT(saidAfterMark(s, atMainMenu() + menuUp(4), menuEnter() + "wait 1000\ntap Down\nwait 300\n"),
              ElementsAre("purge", "say  The key board has been set back to the default settings. ", "purge",
                          "queue  change game options "));
}

TEST(MainMenu, AnEntryRunsAgainWhileEnterIsHeld) {
  Session s;
  s.script(atMainMenu() + menuUp(4) + "press Enter\nwait 6000\nrelease Enter\nwait 1000\n").run();
  EXPECT_GE(timesOf(s.trace(), "say  The key board has been set back to the default settings. ").size(), 2u);
}

// --- the device question ---

TEST(DeviceQuestion, IsAskedOnlyWithAController) {
  Session s;
  EXPECT_THAT(saidAfterMark(s, atMainMenu() + menuUp(), menuEnter() + "wait 1500\n"),
              ElementsAre("purge", "queue " + kTrackPrompt));
  s.options.controller = true;
  EXPECT_THAT(saidAfterMark(s, atMainMenu() + menuUp(), menuEnter() + "wait 1500\n"),
              ElementsAre("purge", "queue  Select, joystick "));
}

TEST(DeviceQuestion, TogglesBothWays) {
  Session s;
  s.options.controller = true;
  EXPECT_THAT(
      saidAfterMark(s, atDeviceQuestion(), menuDown(3)),
      ElementsAre("purge", "queue  key board ", "purge", "queue  joystick ", "purge", "queue  key board "));
  EXPECT_THAT(
      saidAfterMark(s, atDeviceQuestion(), menuUp(3)),
      ElementsAre("purge", "queue  key board ", "purge", "queue  joystick ", "purge", "queue  key board "));
}

TEST(DeviceQuestion, SetsWhatDrives) {
  Session s;
  s.options.controller = true;
  s.script(atDeviceQuestion() + menuEnter() + "wait say  Select the track\nget inputDevice\n").run();
  EXPECT_EQ(answer(s.trace(), "inputDevice"), "1");
  s.script(atDeviceQuestion() + menuDown() + menuEnter() + "wait say  Select the track\nget inputDevice\n")
      .run();
  EXPECT_EQ(answer(s.trace(), "inputDevice"), "2");
}

TEST(DeviceQuestion, IsAskedOnceARun) {
  Session s;
  s.options.controller = true;
  const std::string again = "wait say  Select. Exit Game. \nwait 550\n" + menuUp() + menuEnter() +
                            "wait say  Select the track\nwait 850\n";
  // Back by the menu, and after a race of no laps.
  s.script(atDeviceQuestion() + menuDown() + menuEnter() +
           "wait say  Select the track\nwait 850\ntap Escape\n" + again + menuEnter() +
           "wait say  Enter the number of laps\nwait 20\ntap Enter\n" + again)
      .run();
  EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
  EXPECT_THAT(timesOf(s.trace(), "queue  Select, joystick "), SizeIs(1));
  EXPECT_THAT(timesOf(s.trace(), "queue " + kTrackPrompt), SizeIs(3));
}

TEST(DeviceQuestion, GoesBackToTheTopByTheShiftButton) {
  Session s;
  s.options.controller = true;
  EXPECT_THAT(
      saidAfterMark(s, atDeviceQuestion() + menuDown(), "button 8 down\nwait 320\nbutton 8 up\nwait 550\n"),
      ElementsAre("purge", "queue  Select, joystick "));
}

// --- the track menu ---

TEST(TrackMenu, ComesAfterTheSoundsAndTwoPauses) {
  Session s;
  s.script(atMainMenu() + menuUp() + "echo here\n" + menuEnter() + "wait say  Select the track\n").run();
  const Story story = storyAfter(s.trace(), "here");
  EXPECT_EQ(story.front(), "purge");
  EXPECT_EQ(story[1], "engineBuffer create vorn1.wav");
  EXPECT_EQ(*(story.end() - 2), "queue " + kTrackPrompt);
  EXPECT_THAT(only(story, {"wallLeftBuffer Play", "engineBuffer Play", "sound4Buffer Play"}), IsEmpty());
  // 0.3 s, keys forgotten, 0.3 s
  EXPECT_EQ(timeOf(s.trace(), "queue " + kTrackPrompt),
            timeOf(s.trace(), "engineBuffer create vorn1.wav") + 605);
}

TEST(TrackMenu, GoesDownAndAroundItsTwelveEntries) {
  Session s;
  EXPECT_THAT(saidAfterMark(s, atTrackMenu(), menuDown(12)),
              ElementsAreArray(movesOver(downward(kTrackEntries))));
}

TEST(TrackMenu, GoesUpAndAroundItsTwelveEntries) {
  Session s;
  EXPECT_THAT(saidAfterMark(s, atTrackMenu(), menuUp(12)),
              ElementsAreArray(movesOver(upward(kTrackEntries))));
}

TEST(TrackMenu, KeepsItsCursorInTheTrackChoice) {
  Session s;
  s.script(atTrackMenu() + "get trackChoice\n" + menuDown(3) + "get trackChoice\n" + menuUp(5) +
           "get trackChoice\n")
      .run();
  EXPECT_THAT(only(storyOf(s.trace()), {"value "}),
              ElementsAre("value trackChoice 1", "value trackChoice 4", "value trackChoice 11"));
}

TEST(TrackMenu, PausesBeforeAnEntryWhereThereIsAController) {
  for (const bool controller : {false, true}) {
    Session s;
    s.options.controller = controller;
    s.script(controller
                 ? atDeviceQuestion() + menuDown() + menuEnter() + "wait say  Select the track\nwait 550\n"
                 : atTrackMenu());
    s.script("tap Down\nwait 550\n").run();
    EXPECT_EQ(timeOf(s.trace(), "queue Painsville Oval Track"),
              timesOf(s.trace(), "purge").back() + (controller ? 301 : 0));
  }
}

TEST(TrackMenu, GoesBackToTheTopWithoutAPause) {
  Session s;
  s.options.controller = true;
  s.script(atDeviceQuestion() + menuDown() + menuEnter() + "wait say  Select the track\nwait 550\n" +
           menuDown(2) + "wait 400\nbutton 8 down\nwait 310\nbutton 8 up\nwait 300\nget trackChoice\n")
      .run();
  EXPECT_EQ(timesOf(s.trace(), "queue " + kTrackPrompt).back(), timesOf(s.trace(), "purge").back());
  EXPECT_THAT(timesOf(s.trace(), "queue " + kTrackPrompt), SizeIs(2));
  EXPECT_EQ(answer(s.trace(), "trackChoice"), "1");
}

TEST(TrackMenu, EscapeLeadsToTheMainMenu) {
  Session s;
  EXPECT_THAT(saidAfterMark(s, atTrackMenu() + menuDown(), "tap Escape\nwait 550\ntap Up\nwait 300\n"),
              ElementsAre("purge", "queue " + kMainPrompt, "purge", "queue  Start Game. "));
}

TEST(TrackMenu, F1DoesNothing) {
  Session s;
  EXPECT_THAT(saidAfterMark(s, atTrackMenu(), "tap F1\nwait 300\nget lastKeyCode\n"), IsEmpty());
  EXPECT_EQ(answer(s.trace(), "lastKeyCode"), "");
}

TEST(TrackMenu, Entry11LeadsToTheMainMenuFromItsTop) {
  Session s;
  EXPECT_THAT(saidAfterMark(s, atTrackMenu() + menuUp(2), menuEnter() + "wait 550\ntap Up\nwait 300\n"),
              ElementsAre("purge", "queue " + kMainPrompt, "purge", "queue  Start Game. "));
}

TEST(TrackMenu, Entry12LeavesTheGame) {
  Session s;
  EXPECT_THAT(
      saidAfterMark(s, atTrackMenu() + menuUp(), menuEnter() + "wait 60000\n"),
      ElementsAre("purge", "queue  Thank you for playing Vorn 1 tts, By Ostrin. ", "say  exiting program "));
  EXPECT_EQ(s.exitStatus(), 0);
}

TEST(TrackMenu, RunsTheTrackUnderTheCursor) {
  const std::string welcomes[] = {
      " Welcome to the Maple Leaf Try Oval Track ",        " Welcome to the Painsville oval track ",
      " Welcome to the Chagrin River Speedway ",           " Welcome to the Ohio Motor Speedway ",
      " Welcome to the Shardon Hill Top Race way ",        " Welcome to the Erie Lake Front Motor Speedway ",
      " Welcome to the Mentor road race track ",           " Welcome to the Kirtland dirt mile oval track ",
      " Welcome to the Chesterland dirt road race track ", " Welcome to the Geneva oval track "};
  for (int track = 1; track <= 10; ++track) {
    Session s;
    EXPECT_THAT(
        saidAfterMark(s, atTrackMenu() + menuDown(track - 1),
                      menuEnter() + "wait say  Enter the number\nget trackChoice\nget topGearUnlimited\n"),
        ElementsAre("purge", "purge", "say " + welcomes[track - 1],
                    "queue  Enter the number of laps that you wish to run. "))
        << track;
    EXPECT_EQ(answer(s.trace(), "trackChoice"), std::to_string(track));
  }
}

// --- a race by keyboard leaves no stick behind ---

TEST(Menus, DoNotScrollByTheGasKeyOfACrash) {
  Session s;
  const std::string crash = atMainMenu() + toTrack(1) + enterLaps("1") + startOnKeyboard() +
                            "set forceCrash 1\nset lateralPosition 100\nwait tick 1 or 60000\n";
  s.script(crash + "get joyGasBrake\nset joyGasBrake -10000\nset joySteering 500\ntap Escape\n" +
           "wait say  Select. Exit Game. \necho here\nwait 3000\nget joyGasBrake\nget joySteering\n")
      .run();
  EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
  EXPECT_EQ(answer(s.trace(), "joyGasBrake"), "0");
  EXPECT_EQ(answer(s.trace(), "joySteering"), "0");
  EXPECT_THAT(speechIn(storyAfter(s.trace(), "here")), IsEmpty());
}

}  // namespace
}  // namespace vorn
