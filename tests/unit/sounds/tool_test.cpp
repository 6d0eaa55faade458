// vorn1-sounds as a program: what it writes, says and returns.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "recipe.h"
#include "support/temporary_folder.h"
#include "support_sounds.h"

namespace vorn::sounds {
namespace {

using testing::HasSubstr;
using testing::Not;

struct Outcome {
  int status;
  std::string output;  ///< both streams
};

Outcome ended(int status, std::string output) {
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, std::move(output)};
}

/// Runs `command` in a shell; the tool is `$TOOL`.
Outcome run(const std::string& command) {
  std::FILE* pipe = popen(("TOOL='" VORN_SOUNDS_TOOL "'; (" + command + ") 2>&1").c_str(), "r");
  std::string output;
  for (int c; (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
  return ended(pclose(pipe), output);
}

class SoundTool : public testing::Test {
 protected:
  std::string in(const std::string& name) const { return folder_.path() / name; }

  TemporaryFolder folder_;
};

TEST_F(SoundTool, ListsTheSounds) {
  const Outcome outcome = run("$TOOL --list");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 108);
  EXPECT_THAT(outcome.output, HasSubstr("vorn1t73"));
}

TEST_F(SoundTool, ChecksAFolder) {
  EXPECT_EQ(run("$TOOL --check " VORN_SOUNDS_FOLDER).status, 0);
  ASSERT_EQ(run("$TOOL --only vorn17 --only vorn19 " + in("set")).status, 0);
  EXPECT_EQ(run("$TOOL --only vorn17 --only vorn19.wav --check " + in("set")).status, 0);

  std::fstream file(in("set/vorn17.wav"), std::ios::binary | std::ios::in | std::ios::out);
  file.seekp(static_cast<std::streamoff>(folder_.read("set/vorn17.wav").find(',')));
  file.put('x');
  file.close();
  const Outcome outcome = run("$TOOL --only vorn17 --only vorn19 --check " + in("set"));
  EXPECT_NE(outcome.status, 0);
  EXPECT_THAT(outcome.output, HasSubstr("vorn17.wav: number of items is 1, must be 2"));
  EXPECT_THAT(outcome.output, HasSubstr("1 of 2 sounds are right"));
}

TEST_F(SoundTool, MissesAFile) {
  const Outcome outcome = run("$TOOL --check " + in("") + " --only vorn3");
  EXPECT_NE(outcome.status, 0);
  EXPECT_THAT(outcome.output, HasSubstr("vorn3.wav: cannot be opened"));
  const Outcome nowhere = run("$TOOL --check " + in("nowhere"));
  EXPECT_NE(nowhere.status, 0);
  EXPECT_THAT(nowhere.output, HasSubstr("there is no folder " + in("nowhere")));
}

TEST_F(SoundTool, ReportsOnTheSounds) {
  ASSERT_EQ(run("$TOOL " VORN_SOUNDS_FOLDER " --report " + in("report.html")).status, 0);
  const std::string page = folder_.read("report.html");
  const auto count = [&](const std::string& text) {
    int times = 0;
    for (auto at = page.find(text); at != std::string::npos; at = page.find(text, at + 1)) ++times;
    return times;
  };
  int loops = 0;
  for (const Recipe& recipe : allRecipes()) {
    EXPECT_THAT(page, HasSubstr("<tr id=\"" + std::string(recipe.name) + "\">"));
    loops += recipe.play == Play::kLoop;
  }
  EXPECT_EQ(count("<svg class=\"waveform\""), 108);
  EXPECT_EQ(count("src=\"data:image/png;base64,iVBORw0KGgo"), 108);  // the signature of PNG
  EXPECT_EQ(count("<svg class=\"seam\""), loops);
  EXPECT_EQ(count(" LUFS"), 108);
  EXPECT_EQ(count("<svg class=\"figures\""), 108);
  EXPECT_EQ(count("<br>clear by "), 71);
  EXPECT_EQ(count(" from <a href=\"#vorn1t"), 71);
  EXPECT_EQ(count("<table class=\"distances\">"), 10);
  EXPECT_EQ(count("src="), 108);  // nothing from elsewhere
}

TEST_F(SoundTool, SaysTheFiguresOfASound) {
  const Outcome outcome = run("$TOOL " VORN_SOUNDS_FOLDER " --figures --only vorn9 --only vorn1t3");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 2);
  EXPECT_THAT(outcome.output, HasSubstr("vorn9    roughness 0."));
  EXPECT_THAT(outcome.output, Not(HasSubstr("clear by")));  // that takes engines and walls
}

TEST_F(SoundTool, SaysWhyThereIsNoReport) {
  const Outcome outcome = run("$TOOL " + in("") + " --report " + in("report.html"));
  EXPECT_NE(outcome.status, 0);
  EXPECT_THAT(outcome.output, HasSubstr("vorn0.wav"));
  EXPECT_FALSE(std::filesystem::exists(in("report.html")));
  EXPECT_NE(run("$TOOL --report " + in("report.html")).status, 0);
}

TEST_F(SoundTool, SaysWhatItDoesNotUnderstand) {
  EXPECT_NE(run("$TOOL").status, 0);
  EXPECT_NE(run("$TOOL --nonsense").status, 0);
  const Outcome outcome = run("$TOOL --only vorn99 " + in("set"));
  EXPECT_NE(outcome.status, 0);
  EXPECT_THAT(outcome.output, HasSubstr("no sound is called vorn99"));
}

TEST_F(SoundTool, SaysWhyItCannotWrite) {
  std::ofstream(in("file")) << "in the way";
  const Outcome outcome = run("$TOOL --only vorn17 " + in("file/set"));
  EXPECT_NE(outcome.status, 0);
  EXPECT_THAT(outcome.output, HasSubstr("vorn1-sounds: "));
  EXPECT_THAT(outcome.output, HasSubstr(in("file")));
}

TEST_F(SoundTool, LeavesNothingHalfWrittenOnAFullDisk) {
  // A limit on the size of files stands in for the disk.
  const Outcome outcome = run("trap '' XFSZ; ulimit -f 8; $TOOL --only vorn17 --only vorn9 " + in("set"));
  EXPECT_NE(outcome.status, 0);
  EXPECT_THAT(outcome.output, HasSubstr("vorn9.wav: cannot write"));
  EXPECT_FALSE(std::filesystem::exists(in("set/vorn9.wav")));
  EXPECT_FALSE(std::filesystem::exists(in("set/vorn9.wav.part")));
}

TEST_F(SoundTool, KeepsAnOldFileWhenANewOneCannotBeWritten) {
  ASSERT_EQ(run("$TOOL --only vorn9 " + in("set")).status, 0);
  const std::string before = folder_.read("set/vorn9.wav");
  EXPECT_NE(run("trap '' XFSZ; ulimit -f 8; $TOOL --only vorn9 " + in("set")).status, 0);
  EXPECT_EQ(folder_.read("set/vorn9.wav"), before);
}

TEST_F(SoundTool, SaysInPlainLinesHowFarItIs) {
  const Outcome outcome = run("$TOOL --only vorn17 --only vorn19 " + in("set"));
  EXPECT_THAT(outcome.output, Not(HasSubstr("\r")));
  EXPECT_THAT(outcome.output, testing::StartsWith("Making sounds: 0 of 2.\n"));
  EXPECT_THAT(outcome.output, testing::EndsWith("2 sounds in " + in("set") + "\n"));
}

}  // namespace
}  // namespace vorn::sounds
