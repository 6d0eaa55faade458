// vorn1-testdrive as a program: what it writes, says and returns.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sndfile.hh>
#include <string>

#include "support/program.h"
#include "support/temporary_folder.h"

namespace vorn {
namespace {

using testing::HasSubstr;

TEST(TestDriveTool, DrivesALapOfEachTrack) {
  const TemporaryFolder folder;
  const std::string laps = folder.path() / "laps";
  const Finished drive = runProgram({VORN_TEST_DRIVE_TOOL, VORN_SOUND_FOLDER, laps});
  EXPECT_EQ(drive.exitStatus, 0);
  EXPECT_EQ(drive.errors, "");
  EXPECT_THAT(drive.output, HasSubstr("/lap10engine1.wav: Geneva Oval Track, "));
  for (int track = 1; track <= 10; ++track) {
    SndfileHandle lap(laps + "/lap" + (track < 10 ? "0" : "") + std::to_string(track) + "engine1.wav");
    EXPECT_EQ(lap.channels(), 2) << track;
    EXPECT_EQ(lap.samplerate(), 48000) << track;
    EXPECT_GT(lap.frames(), 20 * 48000) << track;
  }
}

TEST(TestDriveTool, SaysWhyItCannotDrive) {
  const TemporaryFolder empty;
  const Finished drive = runProgram({VORN_TEST_DRIVE_TOOL, empty.path(), empty.path() / "laps"});
  EXPECT_EQ(drive.exitStatus, 1);
  EXPECT_THAT(drive.errors, HasSubstr("vorn1-testdrive: the lap was not finished"));
}

TEST(TestDriveTool, NeedsTwoFolders) {
  EXPECT_NE(runProgram({VORN_TEST_DRIVE_TOOL, VORN_SOUND_FOLDER}).exitStatus, 0);
}

}  // namespace
}  // namespace vorn
