#include "support/session.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Gt;
using testing::HasSubstr;
using testing::SizeIs;

TEST(Session, RunsTheGameFromItsStartToItsEnd) {
  Session s;
  const TraceRecord& trace = s.script(atMainMenu() + menuEnter() + "wait 100000").run();
  EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
  EXPECT_EQ(trace.exitStatus(), 0);
  EXPECT_THAT(trace.spoken(),
              ElementsAre(" ", " Vorn 1 tts version 2 By Ostrin ", " Select. Exit Game. ",
                          " Thank you for playing Vorn 1 tts, By Ostrin. ", " exiting program "));
}

TEST(Session, ReachesFieldsOfTheGame) {
  Session s;
  const TraceRecord& trace = s.script(atMainMenu() + "get voiceVolume\nset speed 12.5\nget speed\nend").run();
  EXPECT_THAT(trace.values("voiceVolume"), ElementsAre(90));
  EXPECT_THAT(trace.values("speed"), ElementsAre(12.5));
}

TEST(Session, KeepsItsFolderFromRunToRun) {
  Session s;
  s.script(atMainMenu() + "end").run();
  const auto once = s.folder.read("vorn1log.txt").size();
  s.script(atMainMenu() + "end").run();
  EXPECT_GT(s.folder.read("vorn1log.txt").size(), once);
}

TEST(Session, IsSetUpByItsOptionsAndFiles) {
  Session s;
  s.options.voices = 0;
  EXPECT_THAT(s.script("wait 100000").run().texts("box"),
              ElementsAre("Sorry but I couldn't find any voices to use\rPlease contact Ostrin"));
  s.options.voices = 3;
  s.folder.write("vorn9.wav", "not the sound");
  EXPECT_THAT(s.script("wait 100000").run().texts("box"), ElementsAre(HasSubstr("corrupt")));
}

TEST(Session, TellsWhyAScriptStopped) {
  Session s;
  s.script("echo fine\njump").run();
  EXPECT_EQ(s.exitStatus(), 2);
  EXPECT_EQ(s.diagnostics(), "session:2: there is no such statement: jump\n");
}

/// Keeps to the middle of the road with the wheel.
std::string keepToTheMiddle(const TickReport& tick) {
  const double offMiddle = tick.lateralPosition - 50;
  return "axis X " + std::to_string(static_cast<int>(std::clamp(-1000 * offMiddle, -10000.0, 10000.0)));
}

TEST(Session, ADriverSteersTickByTickAndAnswersTheVoice) {
  Session s;
  s.options.controller = true;
  Driver driver;
  driver.onTick = keepToTheMiddle;
  driver.onSpeech = [](const std::string& text) -> std::string {
    if (text.find("Start Your Engines") != std::string::npos)
      return "wait 50\nbutton 2 down\nwait 200\nbutton 2 up";
    if (text == " 1 ") return "axis Y -10000\nwait 1200\nbutton 8 down\nwait 150\nbutton 8 up";
    return "";
  };
  driver.until = " Your time for ";
  s.script(atMainMenu() + menuUp() + menuEnter() + "wait say  Select, joystick \nwait 550\n" + menuEnter());
  s.script("wait say  Select the track you wish to run, \nwait 550\n" + menuEnter() + enterLaps("1"));
  const TraceRecord& trace = s.drive(driver).script("echo over\nend").run();
  EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
  EXPECT_THAT(trace.ticks(), SizeIs(Gt(300U)));
  EXPECT_TRUE(trace.said(" Your time for "));
  EXPECT_THAT(trace.texts("echo"), ElementsAre("over"));
}

TEST(Session, ADriverGivesUpWhenNothingHappens) {
  Session s;
  Driver driver;
  driver.until = "never said";
  driver.patienceMs = 1000;
  s.script(atMainMenu()).drive(driver).script("echo over\nend");
  const auto over = s.run().timesOf("echo", "text", "over");
  const std::int64_t menu = s.trace().timesOf("speak", "text", " Select. Exit Game. ").at(0);
  ASSERT_THAT(over, SizeIs(1));
  EXPECT_NEAR(static_cast<double>(over[0] - menu), 550 + 1000, 150);
}

TEST(Session, ReachesTheRaceOnTheKeyboard) {
  Session s;
  const TraceRecord& trace =
      s.script(atMainMenu() + toTrack(1) + enterLaps("1") + startOnKeyboard() + "wait tick 5\nget gear\nend")
          .run();
  EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
  EXPECT_THAT(trace.ticks(), SizeIs(6));
  EXPECT_THAT(trace.values("gear"), ElementsAre(1));
  EXPECT_THAT(trace.spoken(), Contains(" Ladies and Gentlemen, Start Your Engines! ").Times(1));
}

}  // namespace
}  // namespace vorn
