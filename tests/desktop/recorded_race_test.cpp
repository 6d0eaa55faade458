// A race at the desktop, with real keys, that is written down and played again without a desktop.
// Runs within with_desktop.sh.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "desktop/player.h"
#include "platform/headless/trace.h"
#include "support/program.h"
#include "support/temporary_folder.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;
using testing::SizeIs;

std::vector<std::string> linesWith(const std::string& text, const std::string& part) {
  std::istringstream in(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) {
    const std::size_t at = line.find(part);
    if (at != std::string::npos) lines.push_back(line.substr(at));
  }
  return lines;
}

/// A race with all that moves a car: gas, brake, gears, both steering keys, taps and a crash.
void race(Player& player) {
  player.waitFor(" Select. Exit Game. ");
  player.move("Up", " Start Game. ");
  player.answer("Enter");
  player.enterOneLap();
  player.startEngine();
  player.goAtTheHorn();
  player.waitFor("50");
  player.keys.tap("Left", 350);
  player.keys.tap("RightCtrl", 30);
  player.keys.tap("LeftShift", 250);
  player.keys.tap("Up", 150);
  player.keys.tap("Right", 20);
  player.keys.tap("RightShift", 120);
  player.waitFor("100");

  player.keys.press("Right");  // into the wall
  player.rest(6000);
  player.keys.release("Right");
  player.keys.release("LeftCtrl");
  player.keys.tap("Space", 100);
  player.rest(700);
  player.keys.tap("End", 300);
  player.keys.press("LeftCtrl");
  player.rest(500);
  player.keys.tap("Up", 200);
  player.rest(2500);
  player.keys.tap("Escape");
  player.keys.release("LeftCtrl");

  player.waitFor(" Select. Exit Game. ");
  player.move("Enter", " exiting program ");
  EXPECT_EQ(player.waitForEnd(), 0);
}

/// The words of the script's first line behind "options:".
std::vector<std::string> optionsOf(const std::string& script) {
  std::istringstream line(script.substr(0, script.find('\n')));
  std::string word;
  line >> word >> word;
  std::vector<std::string> options;
  while (line >> word) options.push_back(word);
  return options;
}

TEST(RecordedRace, IsTheSameRaceWithoutADesktop) {
  const TemporaryFolder folder;
  copySounds(folder);
  const fs::path file = folder.path() / "race.script";
  {
    Player player(folder.path(), {"--record", file.string()});
    race(player);
  }
  const std::string script = folder.read("race.script");
  const std::vector<std::string> driven = linesWith(script, "{\"ev\":\"tick\"");
  ASSERT_GT(driven.size(), 60u);
  EXPECT_GT(TraceLine::parse(driven.back())["raceTicks"], 289 + 60) << "no crash, or no end of it";
  EXPECT_THAT(linesWith(script, "press LeftShift"), SizeIs(1));

  const TemporaryFolder again;
  copySounds(again);
  const fs::path trace = again.path() / "trace";
  std::vector<std::string> words = {VORN_PROGRAM, "--headless", "--script", file.string(),
                                    "--trace",    trace,        "--folder", again.path()};
  const std::vector<std::string> options = optionsOf(script);
  words.insert(words.end(), options.begin(), options.end());
  const Finished replay = runProgram(words);
  EXPECT_EQ(replay.exitStatus, 0) << replay.errors;
  std::vector<std::string> replayed = linesWith(again.read("trace"), "\"ev\":\"tick\"");
  for (std::string& tick : replayed) tick.insert(0, "{");
  EXPECT_EQ(replayed, driven);
}

}  // namespace
}  // namespace vorn
