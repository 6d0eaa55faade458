#include "platform/desktop/launcher.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "platform/errors.h"
#include "support/temporary_folder.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

std::string written(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(WindowsLauncher, StartsTheProgramInItsFolderWithoutArguments) {
  const TemporaryFolder folder;
  const fs::path place = folder.path() / fs::path(u8"Süße Läufe");
  fs::create_directory(place);
  fs::copy_file(VORN_WHERE_AM_I, place / "arcadehub.exe");
  launch(place / "arcadehub.exe");
  // While the file gets its name Windows lets nobody have it.
  for (int i = 0; i < 6000 && written(place / "out").empty(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_EQ(written(place / "out"), "0 arguments in Süße Läufe");
}

TEST(WindowsLauncher, WhatCannotBeStartedIsAFailedCall) {
  const TemporaryFolder folder;
  EXPECT_THROW(launch(folder.path() / "nothing.exe"), PlatformError);
  folder.write("plain.exe", "no program");
  EXPECT_THROW(launch(folder.path() / "plain.exe"), PlatformError);
}

}  // namespace
}  // namespace vorn
