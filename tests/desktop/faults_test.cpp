// The program at the desktop, with what is around it failing. Runs within with_desktop.sh.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "desktop/player.h"
#include "support/voice_settings.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using std::chrono::steady_clock;
using testing::HasSubstr;

/// A child of this process, killed when this goes before its end.
class Child {
 public:
  explicit Child(pid_t process) : process_(process) {}
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    if (process_ < 0) return;
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  void askToEnd() const { kill(process_, SIGTERM); }
  /// Waits for its end, at most a minute. Returns its exit status, -1 where it was killed, -2 where it lives
  /// on.
  int end() {
    const auto limit = steady_clock::now() + 60s;
    int status = 0;
    while (waitpid(process_, &status, WNOHANG) == 0) {
      if (steady_clock::now() > limit) return -2;
      std::this_thread::sleep_for(10ms);
    }
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t process_;
};

class DesktopFaults : public testing::Test {
 protected:
  DesktopFaults() {
    copySounds(folder);
    folder.write("vorn1voc.cfg", kQuickVoice);
  }
  bool waitUntil(const std::function<bool()>& condition) {
    const auto end = steady_clock::now() + 60s;
    while (!condition()) {
      if (steady_clock::now() > end) return false;
      std::this_thread::sleep_for(20ms);
    }
    return true;
  }
  /// Starts the program from `directory`, its captions going to `output`.
  Child start(int output, const std::vector<std::string>& options, const fs::path& directory = ".") {
    std::vector<std::string> words{VORN_PROGRAM, "--captions", "--speech", "espeak"};
    words.insert(words.end(), options.begin(), options.end());
    const pid_t child = fork();
    if (child != 0) return Child(child);
    dup2(output, STDOUT_FILENO);
    (void)!chdir(directory.c_str());
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    execv(VORN_PROGRAM, arguments.data());
    _exit(127);
  }
  bool hasLog() { return folder.has("vorn1log.txt"); }

  TemporaryFolder folder;
  KeyPresser keys;
};

// --- Captions

TEST_F(DesktopFaults, AReaderThatHasGoneCostsOnlyTheCaptions) {
  int pipe[2];
  ASSERT_EQ(pipe2(pipe, O_CLOEXEC), 0);
  Child game = start(pipe[1], {"--folder", folder.path().string()});
  close(pipe[0]);
  close(pipe[1]);
  ASSERT_TRUE(waitUntil([this] {
    keys.tap("Space");  // cuts the title sound
    return hasLog();
  }));
  std::this_thread::sleep_for(3s);
  game.askToEnd();
  EXPECT_EQ(game.end(), 0);
}

TEST_F(DesktopFaults, AReaderThatHasStoppedCostsOnlyTheCaptions) {
  int pipe[2];
  ASSERT_EQ(pipe2(pipe, O_CLOEXEC), 0);
  constexpr int kSmallest = 4096;
  ASSERT_EQ(fcntl(pipe[1], F_SETPIPE_SZ, kSmallest), kSmallest);
  ASSERT_EQ(write(pipe[1], std::string(kSmallest, '.').data(), kSmallest), kSmallest);  // it is full now
  Child game = start(pipe[1], {"--folder", folder.path().string()});
  ASSERT_TRUE(waitUntil([this] {
    keys.tap("Space");
    return hasLog();
  }));
  std::this_thread::sleep_for(2s);
  game.askToEnd();
  EXPECT_EQ(game.end(), 0);
  close(pipe[0]);
  close(pipe[1]);
}

// --- Signals

class Signals : public DesktopFaults, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(All, Signals, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST_P(Signals, OneIsTheOrdinaryShutdown) {
  Player player(folder.path());
  player.answer("Space");
  player.waitFor(" Select. Exit Game. ");
  kill(player.process(), GetParam());
  player.waitFor(" Thank you for playing Vorn 1 tts, By Ostrin. ");
  player.waitFor(" exiting program ");
  EXPECT_EQ(player.waitForEnd(), 0);
}

class SecondSignal : public DesktopFaults {
 protected:
  SecondSignal() { folder.write("vorn1voc.cfg", kSlowVoice); }
  /// Two signals now: the game ends a second after the second one at the latest. Whatever it would still say,
  /// its farewell at least, takes longer than what a busy machine is granted.
  void expectEnd(Player& player) {
    kill(player.process(), SIGTERM);
    player.rest(200);
    const auto start = steady_clock::now();
    kill(player.process(), SIGTERM);
    EXPECT_EQ(player.waitForEnd(), 0);
    EXPECT_LT(steady_clock::now() - start, 5s);
  }
};

TEST_F(SecondSignal, EndsTheTitle) {
  Player player(folder.path());
  ASSERT_TRUE(waitUntil(
      [] { return std::system("xdotool getwindowfocus getwindowname 2>&1 | grep -q 'Vorn 1'") == 0; }));
  player.rest(1000);
  expectEnd(player);
}

TEST_F(SecondSignal, EndsAReading) {
  Player player(folder.path());
  player.answer("Space");
  player.waitFor(" Select. Exit Game. ");
  player.move("Down", " Reed Instructions. ");
  player.answer("Enter");
  player.hear(20'000);
  expectEnd(player);
}

TEST_F(SecondSignal, EndsASynchronousText) {
  Player player(folder.path());
  player.waitFor(" Vorn 1 tts version 2 By Ostrin ");
  expectEnd(player);
}

TEST_F(SecondSignal, EndsTheFarewell) {
  Player player(folder.path());
  player.answer("Space");
  player.waitFor(" Select. Exit Game. ");
  player.move("Enter", " Thank you for playing Vorn 1 tts, By Ostrin. ");
  expectEnd(player);
}

TEST_F(SecondSignal, EndsAMessageBox) {
  fs::remove(folder.path() / "vorn5.wav");
  folder.write("vorn5.wav", "no sound");
  Player player(folder.path());
  player.waitFor("one or more of the wave files seem to be corrupt");
  player.rest(1000);
  expectEnd(player);
}

// --- The launcher

class Launchers : public DesktopFaults {
 protected:
  Launchers() {
    folder.write("arcadehub.exe",
                 "#!/bin/sh\nls -l /proc/$$/fd > descriptors.new\nmv descriptors.new descriptors\n");
    fs::permissions(folder.path() / "arcadehub.exe", fs::perms::owner_all);
  }
  void playAndLeave(const std::vector<std::string>& options) {
    const int nothing = open("/dev/null", O_WRONLY | O_CLOEXEC);
    // A descriptor that the game inherits without knowing of it.
    const int stray = open("/dev/null", O_RDONLY);
    Child game = start(nothing, options, folder.path());
    close(nothing);
    close(stray);
    ASSERT_TRUE(waitUntil([this] {
      keys.tap("Space");
      return hasLog();
    }));
    std::this_thread::sleep_for(1s);
    game.askToEnd();
    EXPECT_EQ(game.end(), 0);
  }
};

TEST_F(Launchers, IsStartedFromTheFolderAskedForWithTheStandardStreamsAlone) {
  playAndLeave({"--folder", folder.path().string()});
  ASSERT_TRUE(waitUntil([this] { return folder.has("descriptors"); }));
  // Its own 0 to 2 and, behind them, the script that the shell reads.
  const std::string seen = folder.read("descriptors");
  EXPECT_THAT(seen, HasSubstr(" 2 -> "));
  EXPECT_THAT(seen, testing::Not(HasSubstr(" 3 -> "))) << seen;
}

TEST_F(Launchers, IsNotStartedFromAFolderThatWasMerelyFound) {
  playAndLeave({});
  std::this_thread::sleep_for(1s);
  EXPECT_FALSE(folder.has("descriptors"));
}

}  // namespace
}  // namespace vorn
