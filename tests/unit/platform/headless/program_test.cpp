#include "support/program.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/session.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// The program itself, in a folder with the sounds.
class Program : public testing::Test {
 protected:
  void SetUp() override { linkSounds(folder); }

  std::vector<std::string> words(const std::vector<std::string>& options) const {
    std::vector<std::string> all{VORN_PROGRAM, "--headless", "--folder", folder.path().string()};
    all.insert(all.end(), options.begin(), options.end());
    return all;
  }
  Finished play(const std::vector<std::string>& options, const std::string& script) const {
    std::vector<std::string> all = words(options);
    all.insert(all.end(), {"--script", "-"});
    return runProgram(all, script);
  }
  /// Runs with bad options. Returns what it complains of.
  static std::string refused(const std::vector<std::string>& options) {
    std::vector<std::string> all{VORN_PROGRAM};
    all.insert(all.end(), options.begin(), options.end());
    const Finished finished = runProgram(all);
    EXPECT_EQ(finished.exitStatus, 2) << testing::PrintToString(options);
    EXPECT_EQ(finished.output, "") << testing::PrintToString(options);
    return finished.errors;
  }
  static std::string lastLine(const std::string& text) {
    const std::size_t start = text.find_last_of('\n', text.size() - 2);
    return text.substr(start == std::string::npos ? 0 : start + 1);
  }

  TemporaryFolder folder;
};

TEST_F(Program, ExplainsItself) {
  const Finished help = runProgram({VORN_PROGRAM, "--help"});
  EXPECT_EQ(help.exitStatus, 0);
  for (const char* option :
       {"--headless", "--script", "--trace", "--folder", "--render", "--controller", "--voices", "--speech",
        "--seed", "--date", "--time", "--tick-count", "--limit", "--aids"}) {
    EXPECT_THAT(help.output, HasSubstr(option));
  }
  const Finished version = runProgram({VORN_PROGRAM, "--version"});
  EXPECT_EQ(version.exitStatus, 0);
  EXPECT_THAT(version.output, HasSubstr("Vorn 1 TTS 2."));
}

TEST_F(Program, RefusesABadCommandLine) {
  EXPECT_THAT(refused({"--fast"}), HasSubstr("--fast"));
  EXPECT_THAT(refused({"--headless", "extra"}), HasSubstr("extra"));
  EXPECT_THAT(refused({"--script", "-"}), HasSubstr("--headless"));
  EXPECT_THAT(refused({"--controller"}), HasSubstr("--headless"));
  EXPECT_THAT(refused({"--headless", "--trace", "-", "--render", "-"}), HasSubstr("standard output"));
  EXPECT_THAT(refused({"--headless", "--folder", "/nowhere"}), HasSubstr("/nowhere"));
  EXPECT_THAT(refused({"--headless", "--script", "/nowhere/a"}), HasSubstr("/nowhere/a"));
  EXPECT_THAT(refused({"--headless", "--trace", "/nowhere/a"}), HasSubstr("/nowhere/a"));
  EXPECT_THAT(refused({"--headless", "--render", "/nowhere/a.wav"}), HasSubstr("/nowhere/a.wav"));
  EXPECT_THAT(refused({"--headless", "--speech", "auto"}), HasSubstr("auto"));
  EXPECT_THAT(refused({"--speech", "virtual"}), HasSubstr("virtual"));
  EXPECT_THAT(refused({"--headless", "--voices", "-1"}), HasSubstr("--voices"));
  EXPECT_THAT(refused({"--headless", "--voices", "some"}), HasSubstr("--voices"));
  EXPECT_THAT(refused({"--headless", "--seed", "x"}), HasSubstr("--seed"));
  EXPECT_THAT(refused({"--headless", "--tick-count", "2147483648"}), HasSubstr("--tick-count"));
  EXPECT_THAT(refused({"--headless", "--limit", "-1"}), HasSubstr("--limit"));
  for (const char* aids : {"", "turn", "turns,", "turns none"}) {
    EXPECT_THAT(refused({"--headless", "--aids", aids}), HasSubstr("--aids"));
  }
  for (const char* date : {"2026-02-29", "2026-13-01", "26-01-01", "2026/01/01", "2026-1-1", "today", ""}) {
    EXPECT_THAT(refused({"--headless", "--date", date}), HasSubstr("--date"));
  }
  for (const char* time : {"24:00:00", "12:60:00", "12:00:60", "12:00", "1:00:00", "noon"}) {
    EXPECT_THAT(refused({"--headless", "--time", time}), HasSubstr("--time"));
  }
}

TEST_F(Program, WithoutAScriptTheSessionEndsAtOnce) {
  const Finished finished = runProgram(words({"--trace", "-"}));
  EXPECT_EQ(finished.exitStatus, 0);
  EXPECT_THAT(lastLine(finished.output), EndsWith("\"ev\":\"end\",\"exit\":0}\n"));
  EXPECT_EQ(finished.errors, "");
}

TEST_F(Program, PlaysAndEndsWithTheGame) {
  const Finished finished = play({"--trace", "-"}, atMainMenu() + menuEnter() + "wait 100000");
  EXPECT_EQ(finished.exitStatus, 0);
  EXPECT_THAT(finished.output, StartsWith("{\"ms\":0,\"ev\":\"window\",\"caption\":"));
  EXPECT_THAT(finished.output, HasSubstr(" Thank you for playing"));
  EXPECT_EQ(finished.errors, "");
}

TEST_F(Program, SwitchesAidsOn) {
  const std::string script =
      atMainMenu() + toTrack(1) + enterLaps("1") + startOnKeyboard() + "tap F2\nwait 100\nend";
  EXPECT_THAT(play({"--trace", "-", "--aids", "turns,laps"}, script).output,
              HasSubstr(" On: turn calls, lap times. "));
  EXPECT_THAT(play({"--trace", "-"}, script).output, HasSubstr(" No aids are on. "));
}

TEST_F(Program, ReportsALineItDoesNotUnderstand) {
  const Finished finished = play({"--trace", "-"}, "wait 5\npress Any\n");
  EXPECT_EQ(finished.exitStatus, 2);
  EXPECT_EQ(finished.errors, "standard input:2: there is no such key: Any\n");
  EXPECT_EQ(lastLine(finished.output), "{\"ms\":6,\"ev\":\"end\",\"exit\":2}\n");

  folder.write("a.script", "\nget nothing\n");
  const std::string path = (folder.path() / "a.script").string();
  const Finished fromFile = runProgram(words({"--script", path}));
  EXPECT_EQ(fromFile.exitStatus, 2);
  EXPECT_EQ(fromFile.errors, path + ":2: there is no such field: nothing\n");
}

TEST_F(Program, ReportsAWaitThatPassedTheLimit) {
  const Finished finished = play({"--trace", "-", "--limit", "700"}, "wait say never said");
  EXPECT_EQ(finished.exitStatus, 4);
  EXPECT_EQ(finished.errors, "standard input:1: waited 700 ms for a text with \"never said\"\n");
  EXPECT_THAT(lastLine(finished.output), EndsWith("\"ev\":\"end\",\"exit\":4}\n"));
}

TEST_F(Program, ReportsAFailedCall) {
  const Finished finished =
      play({"--trace", "-"}, atMainMenu() + "set engineSound 9\n" + menuUp() + menuEnter() + "wait 100000");
  EXPECT_EQ(finished.exitStatus, 1);
  EXPECT_THAT(finished.errors, HasSubstr("CreateSoundBufferFromFile(.wav)"));
  EXPECT_THAT(finished.output, HasSubstr("\"ev\":\"error\",\"text\":\"CreateSoundBufferFromFile(.wav)"));
  EXPECT_THAT(lastLine(finished.output), EndsWith("\"ev\":\"end\",\"exit\":1}\n"));
}

TEST_F(Program, ReportsATraceOrARenderThatCannotBeWritten) {
  for (const char* option : {"--trace", "--render"}) {
    const Finished finished = play({option, "/dev/full"}, "wait 5000\nend");
    EXPECT_EQ(finished.exitStatus, 1) << option;
    EXPECT_THAT(finished.errors, HasSubstr(option + 2));
  }
}

TEST_F(Program, TakesItsOptions) {
  const Finished finished =
      play({"--trace", "-", "--controller", "--voices", "5", "--seed", "7", "--date", "2024-02-29", "--time",
            "23:59:59", "--tick-count", "-5", "--limit", "100000"},
           atMainMenu() + "get joystickPresent\nget lastVoiceIndex\nend");
  EXPECT_EQ(finished.exitStatus, 0) << finished.errors;
  EXPECT_THAT(finished.output, HasSubstr("\"name\":\"joystickPresent\",\"value\":1}"));
  EXPECT_THAT(finished.output, HasSubstr("\"name\":\"lastVoiceIndex\",\"value\":4}"));
  // It takes some seconds to the log's header: by then a day has begun.
  EXPECT_THAT(folder.read("vorn1log.txt"), HasSubstr("3/1/2024"));
}

TEST_F(Program, WritesTheSameTraceToAFileEveryTime) {
  const std::string script =
      atMainMenu() + toTrack(1) + enterLaps("1") + startOnKeyboard() + "wait tick 50\nclose";
  const auto file = [&](const char* name) { return (folder.path() / name).string(); };
  EXPECT_EQ(play({"--trace", file("one")}, script).exitStatus, 0);
  folder.write("vorn1log.txt", "");
  EXPECT_EQ(play({"--trace", file("two"), "--render", file("mix.wav")}, script).exitStatus, 0);
  EXPECT_GT(folder.read("one").size(), 50000U);
  EXPECT_EQ(folder.read("one"), folder.read("two"));
}

TEST_F(Program, RendersToStandardOutput) {
  const Finished finished = play({"--render", "-"}, "wait 499");
  EXPECT_EQ(finished.exitStatus, 0);
  EXPECT_EQ(finished.output.size(), 500U * 48 * 4);
  EXPECT_THAT(finished.output.substr(400 * 48 * 4), Not(testing::Each('\0')));  // the title sounds
}

/// Reads up to a line with `text`. Returns it, or nothing where there is none.
std::optional<std::string> readUpTo(LiveProgram& program, const std::string& text) {
  for (;;) {
    const auto line = program.readLine();
    if (!line || line->find(text) != std::string::npos) return line;
  }
}

TEST_F(Program, ScriptAndTraceRunInLockStep) {
  LiveProgram program(words({"--script", "-", "--trace", "-"}));
  std::istringstream wayIn(atMainMenu() + toTrack(1) + enterLaps("1") + startOnKeyboard() + "echo ready");
  for (std::string line; std::getline(wayIn, line);) program.writeLine(line);
  ASSERT_TRUE(readUpTo(program, "ready"));
  EXPECT_TRUE(program.isSilent(50));
  for (int i = 0; i < 30; ++i) {
    program.writeLine("wait tick");
    const auto tick = readUpTo(program, "\"ev\":\"tick\"");
    ASSERT_TRUE(tick) << i;
    // Time stands still until the next statement comes.
    const std::string steer = TraceLine::parse(*tick).at("lateralPosition") > 50 ? "Left" : "Right";
    program.writeLine("press " + steer);
    const auto press = readUpTo(program, "\"ev\":\"input\"");
    ASSERT_TRUE(press) << i;
    EXPECT_EQ(TraceLine::parse(*press).at("ms"), TraceLine::parse(*tick).at("ms").get<int>() + 1);
    program.writeLine("release " + steer);
    ASSERT_TRUE(readUpTo(program, "\"ev\":\"input\""));
  }
  program.closeInput();
  EXPECT_TRUE(readUpTo(program, "\"ev\":\"end\",\"exit\":0}"));
  EXPECT_EQ(program.waitForEnd(), 0);
}

TEST_F(Program, AListenerOnAPipeHearsInLockStep) {
  const std::string pipe = (folder.path() / "pipe").string();
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  LiveProgram program(words({"--script", "-", "--trace", "-", "--render", pipe}));
  const int listener = open(pipe.c_str(), O_RDONLY);
  ASSERT_GE(listener, 0);
  const auto listen = [&](std::size_t ms) {
    std::vector<char> heard(ms * 48 * 4);
    for (std::size_t done = 0; done < heard.size();) {
      const ssize_t got = read(listener, heard.data() + done, heard.size() - done);
      if (got <= 0) return false;
      done += static_cast<std::size_t>(got);
    }
    return true;
  };
  program.writeLine("wait 20");
  program.writeLine("echo first");
  EXPECT_TRUE(listen(21));
  ASSERT_TRUE(readUpTo(program, "first"));
  ASSERT_EQ(fcntl(listener, F_SETFL, O_NONBLOCK), 0);
  char more;
  EXPECT_LT(read(listener, &more, 1), 0);  // not a sample beyond the statement
  ASSERT_EQ(fcntl(listener, F_SETFL, 0), 0);
  program.writeLine("wait 300");
  program.writeLine("end");
  EXPECT_TRUE(listen(300));
  EXPECT_EQ(read(listener, &more, 1), 0);
  close(listener);
  EXPECT_EQ(program.waitForEnd(), 0);
}

}  // namespace
}  // namespace vorn
