// The program at a desktop whose window nobody sees and whose sound nobody hears:
// which folder it plays in, what it prints, how it ends.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <filesystem>

#include "sound/catalogue.h"
#include "support/program.h"
#include "support/session.h"
#include "support/voice_settings.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* kDefaultButtons = "0\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n1\r\n1\r\n";
constexpr const char* kTitle = " Vorn 1 tts version 2 By Ostrin ";

class DesktopProgram : public testing::Test {
 protected:
  /// Starts `program` in `current`, with `wrapper` in front of it; its errors go to its output.
  LiveProgram start(const std::vector<std::string>& options, const fs::path& current,
                    const fs::path& program = VORN_PROGRAM,
                    const std::vector<std::string>& wrapper = {}) const {
    std::vector<std::string> words{"sh",
                                   "-c",
                                   "exec \"$@\" 2>&1",
                                   "sh",
                                   "env",
                                   "-C",
                                   current.string(),
                                   "-u",
                                   "DISPLAY",
                                   "-u",
                                   "WAYLAND_DISPLAY",
                                   "SDL_VIDEODRIVER=dummy",
                                   "SDL_AUDIODRIVER=disk",
                                   "SDL_DISKAUDIOFILE=/dev/null",
                                   "XDG_DATA_HOME=" + dataHome.path().string()};
    words.insert(words.end(), wrapper.begin(), wrapper.end());
    words.insert(words.end(), {program.string(), "--speech", "espeak"});
    words.insert(words.end(), options.begin(), options.end());
    return LiveProgram(words);
  }
  /// Reads on until a line with `text`, leaving those in front of it in `before`. Returns whether one came.
  bool said(LiveProgram& program, const std::string& text) {
    while (const auto line = program.readLine(60'000)) {
      if (line->find(text) != std::string::npos) return true;
      before.push_back(*line);
    }
    return false;
  }
  /// A player who closes whatever window there is, and listens to the end.
  static int close(LiveProgram& program) {
    kill(program.process(), SIGTERM);
    while (program.readLine(60'000)) {
    }
    return program.waitForEnd();
  }
  /// A start that leads nowhere, since the sounds are none: by the control map that
  /// is put in order one sees which folder was taken.
  void startInVain(LiveProgram program) {
    EXPECT_TRUE(said(program, "wave files seem to be corrupt"));
    EXPECT_EQ(close(program), 0);
  }
  static void putEmptySounds(const TemporaryFolder& folder) {
    for (const CatalogueEntry& entry : soundCatalogue()) folder.write(soundFileName(entry.name), "");
    folder.write("vorn1voc.cfg", kQuickVoice);
  }
  static void putBadMap(const TemporaryFolder& folder) { folder.write("vorn1joy.cfg", "bad"); }

  TemporaryFolder folder, dataHome;
  std::vector<std::string> before;
};

TEST_F(DesktopProgram, PlaysInTheCurrentFolderWhereItHoldsTheSounds) {
  putEmptySounds(folder);
  putBadMap(folder);
  startInVain(start({"--captions"}, folder.path()));
  EXPECT_EQ(folder.read("vorn1joy.cfg"), kDefaultButtons);
  EXPECT_THAT(dataHome.names(), IsEmpty());
}

TEST_F(DesktopProgram, PlaysInTheFolderThatIsAskedForWhateverTheCurrentOneHolds) {
  TemporaryFolder asked;
  for (const TemporaryFolder* each : {&folder, &asked}) {
    putEmptySounds(*each);
    putBadMap(*each);
  }
  startInVain(start({"--captions", "--folder", asked.path().string()}, folder.path()));
  EXPECT_EQ(asked.read("vorn1joy.cfg"), kDefaultButtons);
  EXPECT_EQ(folder.read("vorn1joy.cfg"), "bad");
}

/// The program with a sound tool beside it that only writes down for which folder it was called.
class WithASoundTool : public DesktopProgram {
 protected:
  WithASoundTool() {
    fs::copy_file(VORN_PROGRAM, program);
    putTool("printf '%s\\n' \"$@\" >>'" + (bin.path() / "called").string() + "'");
  }
  void putTool(const std::string& command) const {
    bin.write("vorn1-sounds", "#!/bin/sh\n" + command + "\n");
    fs::permissions(bin.path() / "vorn1-sounds", fs::perms::owner_all);
  }
  std::string called() const { return bin.has("called") ? bin.read("called") : ""; }

  TemporaryFolder bin;
  const fs::path program = bin.path() / "vorn1";
};

TEST_F(WithASoundTool, WithoutSoundsInSightItMakesAFolderOfThePlayersOwn) {
  startInVain(start({"--captions"}, folder.path(), program));
  EXPECT_THAT(dataHome.names(), ElementsAre("vorn1"));
  EXPECT_EQ(called(), (dataHome.path() / "vorn1").string() + "\n");
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(WithASoundTool, AFolderMayHaveAnyName) {
  const fs::path odd = folder.path() / "Bo's \"own\" $HOME `x`; folder";
  fs::create_directory(odd);
  startInVain(start({"--captions", "--folder", odd.string()}, folder.path(), program));
  EXPECT_EQ(called(), odd.string() + "\n");
}

TEST_F(WithASoundTool, ThePlayersOwnFolderIsBelowHomeWhereNoOtherPlaceIsNamed) {
  for (const std::string place : {"-uXDG_DATA_HOME", "XDG_DATA_HOME="}) {
    const TemporaryFolder home;
    startInVain(
        start({"--captions"}, folder.path(), program, {"env", place, "HOME=" + home.path().string()}));
    EXPECT_TRUE(fs::is_directory(home.path() / ".local" / "share" / "vorn1")) << place;
    EXPECT_THAT(dataHome.names(), IsEmpty()) << place;
  }
}

TEST_F(WithASoundTool, AToolThatFailsIsSpokenOf) {
  putTool("exit 1");
  LiveProgram running = start({"--captions"}, folder.path(), program);
  EXPECT_TRUE(said(running, "The sounds could not be made."));
  EXPECT_TRUE(said(running, "wave files seem to be corrupt"));
  EXPECT_EQ(close(running), 0);
}

TEST_F(WithASoundTool, AToolIsWaitedForWhoeverIgnoresTheEndsOfChildren) {
  startInVain(start({"--captions"}, folder.path(), program, {"env", "--ignore-signal=CHLD"}));
  EXPECT_NE(called(), "");
  EXPECT_THAT(before, Not(Contains("The sounds could not be made.")));
}

TEST_F(WithASoundTool, SoundsThatAreThereAreNotMadeAgain) {
  putEmptySounds(folder);
  startInVain(start({"--captions"}, folder.path(), program));
  EXPECT_EQ(called(), "");
}

TEST_F(DesktopProgram, WithoutCaptionsPrintsNothingOfWhatIsSaid) {
  putEmptySounds(folder);
  LiveProgram program = start({}, folder.path());
  EXPECT_TRUE(said(program, "Sorry but one or more"));  // the box; what is said has a comma more
  EXPECT_THAT(before, Not(Contains(HasSubstr("Sorry, but"))));
  EXPECT_EQ(close(program), 0);
}

TEST_F(DesktopProgram, OfADemonstrationPrintsEveryTextOnce) {
  linkSounds(folder);
  LiveProgram program = start({"--demo", "--captions"}, folder.path());
  EXPECT_TRUE(said(program, kTitle));
  before.clear();
  EXPECT_TRUE(said(program, " Select. Exit Game. "));
  EXPECT_THAT(before, Each(HasSubstr("SDL")));  // which says what it has to say at any time
  EXPECT_EQ(close(program), 0);
}

TEST_F(DesktopProgram, AnErrorIsPrintedAndEndsItWithStatusOne) {
  linkSounds(folder);
  folder.write("vorn1ops.cfg", "1\r\n1\r\n1\r\n1\r\n1\r\n9\r\n");  // an engine that is none
  LiveProgram program = start({"--demo"}, folder.path());
  // Printed, spoken and shown in a box, which waits for its answer.
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(said(program, "(.wav)")) << i;
  EXPECT_TRUE(program.isSilent(200));
  EXPECT_EQ(close(program), 1);
}

/// Whatever is connected to the machine that this runs on.
TEST(ControllerInfoOption, TellsOfControllersAndEnds) {
  const Finished told = runProgram({VORN_PROGRAM, "--controller-info"});
  EXPECT_EQ(told.exitStatus, 0);
  EXPECT_THAT(told.output,
              testing::AnyOf("No game controller is connected.\n", testing::StartsWith("Controller 1: ")));
}

}  // namespace
}  // namespace vorn
