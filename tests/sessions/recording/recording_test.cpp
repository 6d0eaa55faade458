// Sessions that are written down while they are played, and then played again from what was written. The
// player is a script here; at the desktop whole_race_test does the same with real keys.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "platform/headless/headless_platform.h"
#include "recording/recording_platform.h"
#include "shell/start_up.h"
#include "state/game_state.h"
#include "support/session.h"
#include "support/temporary_folder.h"
#include "support/trace_record.h"

namespace vorn {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string contentsOf(const std::filesystem::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

/// Everything of the car ticks but the time of the session at which they came.
std::vector<std::string> carOf(const TraceRecord& trace) {
  std::vector<std::string> ticks;
  for (TraceLine line : trace.ticks()) {
    line.erase("ms");
    ticks.push_back(traceText(line));
  }
  return ticks;
}

struct Played {
  TraceRecord trace;
  int exitStatus = -1;
};

/// `play` has the platform to play on.
template <typename Play>
Played playScript(const std::string& script, HeadlessOptions options, const TemporaryFolder& folder,
                  Play play) {
  Played played;
  std::istringstream lines(script);
  StreamScript source(lines, "script");
  HeadlessConnections connections;
  connections.script = &source;
  connections.trace = &played.trace;
  options.folder = folder.path();
  HeadlessPlatform platform(options, connections);
  played.exitStatus = platform.run([&] { return play(platform); });
  return played;
}

int playGame(Platform& platform) {
  GameState game(platform);
  Form_Load(game);
  return 0;
}

/// A session and its replay.
struct Twice {
  explicit Twice(const std::string& player, HeadlessOptions options = {},
                 const std::string& gameOptions = "") {
    const std::filesystem::path file = std::filesystem::path(folder.path()) / "session.script";
    linkSounds(folder);
    if (!gameOptions.empty()) folder.write("vorn1ops.cfg", gameOptions);
    played = playScript(player, options, folder,
                        [&](Platform& platform) { return playGame(*makeRecordingPlatform(platform, file)); });
    script = contentsOf(file);
    linkSounds(secondFolder);
    std::filesystem::copy(std::filesystem::path(folder.path()) / "session.folder", secondFolder.path());
    options.seed = std::stoull(script.substr(script.find("--seed ") + 7));
    replayed = playScript(script, options, secondFolder, playGame);
  }

  TemporaryFolder folder, secondFolder;
  std::string script;
  Played played, replayed;
};

HeadlessOptions withController() {
  HeadlessOptions options;
  options.controller = true;
  return options;
}

/// A script of tests/replays/, without its questions about the state.
std::string replay(const std::string& name) {
  std::istringstream lines(contentsOf(std::filesystem::path(VORN_REPLAYS) / (name + ".script")));
  std::string script;
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("get ")) script += line + '\n';
  }
  return script;
}

TEST(Recording, OfALapByKeysGivesTheSameLap) {
  const Twice lap(replay("lap_maple_by_keys"));
  EXPECT_THAT(lap.script, StartsWith("# options: --seed "));
  EXPECT_GT(carOf(lap.played.trace).size(), 400u);
  EXPECT_EQ(carOf(lap.replayed.trace), carOf(lap.played.trace));
}

TEST(Recording, OfALapByWheelGivesTheSameLap) {
  const Twice lap(replay("lap_chagrin_by_wheel"), withController());
  EXPECT_THAT(lap.script, HasSubstr(" --controller\n"));
  EXPECT_GT(carOf(lap.played.trace).size(), 400u);
  EXPECT_EQ(carOf(lap.replayed.trace), carOf(lap.played.trace));
}

TEST(Recording, OfACrashGivesTheSameCrash) {
  const Twice crash(replay("crash"), withController());
  EXPECT_GT(carOf(crash.played.trace).size(), 30u);
  EXPECT_EQ(carOf(crash.replayed.trace), carOf(crash.played.trace));
}

// Both Shifts make the same event: which one it was the reading tells.
TEST(Recording, TellsTheShiftThatBrakesFromTheOneThatAsks) {
  const Twice race(
      atMainMenu() + toTrack(1) + enterLaps("1") + startOnKeyboard() +
      "wait tick 20\npress RightShift\nwait tick 2\nrelease RightShift\nwait tick 3\n"
      "press LeftShift\nwait tick 5\nrelease LeftShift\nwait tick 3\npress Escape\nwait tick or 500\n"
      "release Escape\nwait 1000\nclose\n");
  EXPECT_THAT(race.script, HasSubstr("press RightShift\n"));
  EXPECT_THAT(race.script, Not(HasSubstr("focus")));  // as it would be corrected
  EXPECT_THAT(race.script, HasSubstr("press LeftShift\n"));
  EXPECT_GT(carOf(race.played.trace).size(), 30u);
  EXPECT_EQ(carOf(race.replayed.trace), carOf(race.played.trace));
}

TEST(Recording, HasTheSessionsTextsFilesAndEnd) {
  const Twice session(
      atMainMenu() + menuDown(17) + menuEnter() + "wait 1000\ntap Down\nwait 1000\ntap Enter\nwait 3000\n" +
      "tap Enter\nwait 1000\ntap Down\nwait 500\ntap Enter\nwait 1000\ntap Enter\nwait 1000\ntap Enter\n"
      "wait 1000\ntap Enter\nwait 2000\nclose\n");
  EXPECT_EQ(session.played.exitStatus, 0);
  EXPECT_EQ(session.replayed.exitStatus, 0);
  EXPECT_TRUE(session.played.trace.said(" nature "));
  EXPECT_EQ(session.replayed.trace.spoken(), session.played.trace.spoken());
  EXPECT_EQ(session.replayed.trace.voice(), session.played.trace.voice());
  EXPECT_EQ(session.secondFolder.read("vorn1ops.cfg"), session.folder.read("vorn1ops.cfg"));
}

TEST(Recording, HasEachCarTickAsAComment) {
  const Twice crash(replay("crash"), withController());
  for (const std::string& tick : carOf(crash.played.trace))
    EXPECT_THAT(crash.script, HasSubstr("# " + tick + '\n'));
}

TEST(Recording, BeginsWithThePlayersFiles) {
  const std::string noGears = "1\r\n1\r\n2\r\n1\r\n1\r\n1\r\n";
  const Twice lap(replay("lap_maple_by_keys"), {}, noGears);
  EXPECT_EQ(lap.folder.read("session.folder/vorn1ops.cfg"), noGears);
  EXPECT_FALSE(
      lap.folder.has("session.folder/vorn1log.txt"));  // the one that is there now is of this session
  EXPECT_EQ(carOf(lap.replayed.trace), carOf(lap.played.trace));
  EXPECT_EQ(lap.replayed.trace.spoken(), lap.played.trace.spoken());
}

TEST(Recording, OverwritesNothing) {
  const TemporaryFolder folder;
  folder.write("session.script", "of yesterday");
  HeadlessPlatform platform({}, {});
  EXPECT_THROW(makeRecordingPlatform(platform, std::filesystem::path(folder.path()) / "session.script"),
               PlatformError);
  EXPECT_EQ(folder.read("session.script"), "of yesterday");
}

}  // namespace
}  // namespace vorn
