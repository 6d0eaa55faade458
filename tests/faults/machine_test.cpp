// The program on a machine that lacks something: display, sound, voice, streams, room.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <filesystem>

#include "support/program.h"
#include "support/session.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr int kKilled = -1;

/// The program by way of the shell, which may close and redirect its streams.
Finished shell(const std::string& command) {
  return runProgram({"sh", "-c", command});
}

class OnAMachine : public testing::Test {
 protected:
  OnAMachine() { linkSounds(folder); }
  std::string headless(const std::string& options) const {
    return std::string("exec " VORN_PROGRAM " --headless --folder ") + folder.path().string() + " " + options;
  }
  /// The program without display and with `environment`, in the game's folder.
  Finished bare(const std::string& environment, const std::string& options = "") const {
    return shell("cd " + folder.path().string() + " && env -u DISPLAY -u WAYLAND_DISPLAY " + environment +
                 " " VORN_PROGRAM " --folder . " + options);
  }

  TemporaryFolder folder;
};

using WithClosedDescriptors = OnAMachine;

TEST_F(WithClosedDescriptors, TheGameIsPlayedAndNothingStraysIntoItsFiles) {
  folder.write("script", atMainMenu() + "wait 3000\nclose\n");
  for (const std::string closed : {"<&-", ">&-", "2>&-", "<&- >&- 2>&-"}) {
    folder.write("vorn1log.txt", "");
    const Finished finished = shell(headless("--script " + (folder.path() / "script").string() + " --trace " +
                                             (folder.path() / "trace").string() + " " + closed));
    EXPECT_EQ(finished.exitStatus, 0) << closed;
    EXPECT_THAT(folder.read("trace"), HasSubstr("\"exit\":0")) << closed;
    EXPECT_THAT(folder.read("vorn1log.txt"), testing::StartsWith(" \r\nVorn 1 log for ")) << closed;
  }
}

TEST_F(WithClosedDescriptors, ADesktopGameEndsWithAWord) {
  const Finished finished = bare("SDL_AUDIODRIVER=disk SDL_DISKAUDIOFILE=/dev/null", "<&- >&-");
  EXPECT_EQ(finished.exitStatus, 0);
  EXPECT_THAT(finished.errors, HasSubstr("no display"));
}

using WithoutDisplayAndSound = OnAMachine;

/// No sound by any way round.
constexpr const char* kNoSound =
    "-u XDG_RUNTIME_DIR HOME=/nonexistent PULSE_SERVER=unix:/nonexistent PIPEWIRE_REMOTE=nonexistent "
    "ALSA_CONFIG_PATH=/dev/null JACK_NO_START_SERVER=1 AUDIODEV=/nonexistent";

TEST_F(WithoutDisplayAndSound, BothAreNamed) {
  const Finished finished = bare(kNoSound);
  EXPECT_EQ(finished.exitStatus, 0);
  EXPECT_THAT(finished.errors, HasSubstr("There is no display"));
  EXPECT_THAT(finished.errors, HasSubstr("There is no sound device"));
}

TEST_F(WithoutDisplayAndSound, TheDemonstrationGoesBesideThePlayersOwn) {
  folder.write("demo.wav", "the player's");
  fs::create_symlink("nowhere", folder.path() / "demo-2.wav");
  const Finished finished = bare(kNoSound);
  EXPECT_EQ(finished.exitStatus, 0);
  EXPECT_EQ(folder.read("demo.wav"), "the player's");
  EXPECT_FALSE(folder.has("nowhere"));
  const fs::path place = fs::canonical(folder.path()) / "demo-3.wav";
  EXPECT_GT(fs::file_size(place), 1'000'000U);
  EXPECT_THAT(finished.errors, HasSubstr("demo-3.wav"));
}

using WithDamagedVoice = OnAMachine;

TEST_F(WithDamagedVoice, ItSaysSoAndEnds) {
  const TemporaryFolder data;
  fs::copy(VORN_VOICE_DATA, data.path() / "espeak-ng-data", fs::copy_options::recursive);
  const std::string voice = "ESPEAK_DATA_PATH=" + (data.path() / "espeak-ng-data").string();
  folder.write("script", "wait 2000\nend\n");
  const std::string play = "--speech espeak --script " + (folder.path() / "script").string();
  int refused = 0;
  for (const std::string file : {"phontab", "phonindex", "phondata", "intonations", "en_dict"}) {
    const fs::path path = data.path() / "espeak-ng-data" / file;
    const fs::path whole = data.path() / "whole";
    fs::copy_file(path, whole, fs::copy_options::overwrite_existing);
    for (const std::uintmax_t left : {0, 100}) {
      fs::resize_file(path, left);
      const Finished finished = shell("export " + voice + "; " + headless(play));
      EXPECT_NE(finished.exitStatus, kKilled) << file << " of " << left << " bytes";
      if (finished.exitStatus != 0) {
        ++refused;
        EXPECT_THAT(finished.errors, HasSubstr("espeak-ng-data")) << file;
      }
      fs::copy_file(whole, path, fs::copy_options::overwrite_existing);
    }
  }
  EXPECT_GT(refused, 0) << "nothing was damaged";
  EXPECT_EQ(shell("export " + voice + "; " + headless(play)).exitStatus, 0);
}

using WithoutControllers = OnAMachine;

TEST_F(WithoutControllers, TheGameIsPlayedAllTheSame) {
  LiveProgram program({"sh", "-c",
                       "exec env SDL_VIDEODRIVER=dummy SDL_AUDIODRIVER=disk SDL_DISKAUDIOFILE=/dev/null "
                       "LD_PRELOAD=" VORN_NO_CONTROLLERS " " VORN_PROGRAM
                       " --captions --speech espeak --folder " +
                           folder.path().string() + " 2>&1"});
  std::string said;
  while (said.find(" Select. Exit Game. ") == std::string::npos) {
    const auto line = program.readLine();
    ASSERT_TRUE(line) << said;
    said += *line + '\n';
  }
  EXPECT_THAT(said, HasSubstr("Game controllers cannot be used: no controllers today"));
  kill(program.process(), SIGTERM);
  while (program.readLine()) {
  }
  EXPECT_EQ(program.waitForEnd(), 0);
}

using CommandLineFaults = OnAMachine;

TEST_F(CommandLineFaults, AFolderIsNoScript) {
  const Finished finished = shell(headless("--script " + folder.path().string()));
  EXPECT_EQ(finished.exitStatus, 2);
  EXPECT_THAT(finished.errors, HasSubstr("is a folder"));
}

TEST_F(CommandLineFaults, AFolderThatLooksLikeAnOptionIsRefused) {
  fs::create_directory(folder.path() / "-x");
  const Finished finished =
      shell("cd " + folder.path().string() + " && exec " VORN_PROGRAM " --headless --folder=-x");
  EXPECT_EQ(finished.exitStatus, 2);
  EXPECT_THAT(finished.errors, HasSubstr("./-x"));
}

}  // namespace
}  // namespace vorn
