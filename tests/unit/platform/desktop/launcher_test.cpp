#include "platform/desktop/launcher.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "platform/errors.h"
#include "support/temporary_folder.h"

namespace vorn {
namespace {

class LauncherTest : public testing::Test {
 protected:
  std::filesystem::path script(const std::string& text) {
    folder.write("arcadehub.exe", text);
    const auto path = folder.path() / "arcadehub.exe";
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path;
  }
  /// What the program wrote, once it has.
  std::string written(const std::string& name) {
    for (int i = 0; i < 6000 && !folder.has(name); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return folder.has(name) ? folder.read(name) : "";
  }

  TemporaryFolder folder;
};

TEST_F(LauncherTest, StartsTheProgramInItsFolderWithoutWaiting) {
  // It lives until it is told to end, or for as long as makes waiting for it show.
  launch(
      script("#!/bin/sh\necho \"$# arguments in $(pwd)\" > out.new\nmv out.new out\n"
             "for i in $(seq 100); do [ -e end ] && break; sleep 0.1; done\necho > ended.new\nmv ended.new "
             "ended\n"));
  EXPECT_FALSE(folder.has("ended"));
  EXPECT_EQ(written("out"), "0 arguments in " + std::filesystem::canonical(folder.path()).string() + "\n");
  folder.write("end", "");
  EXPECT_NE(written("ended"), "");
}

TEST_F(LauncherTest, TheProgramIsInASessionOfItsOwn) {
  launch(script("#!/bin/sh\nps -o sid= -p $$ > out.new\nmv out.new out\n"));
  const std::string session = written("out");
  ASSERT_NE(session, "");
  EXPECT_NE(std::stoi(session), getsid(0));
}

TEST_F(LauncherTest, WhatCannotBeStartedIsAFailedCall) {
  EXPECT_THROW(launch(folder.path() / "nothing"), PlatformError);
  folder.write("plain", "no program");
  EXPECT_THROW(launch(folder.path() / "plain"), PlatformError);
  EXPECT_THROW(launch(script("\x7F not a program of this machine")), PlatformError);
}

}  // namespace
}  // namespace vorn
