/// The player's files on a disk of Windows.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "platform/common/folder_files.h"
#include "platform/errors.h"
#include "support/temporary_folder.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

class WindowsFiles : public testing::Test {
 protected:
  TemporaryFolder folder;
  FolderFiles files{folder.path()};

  /// Opens a file as programs do that let nobody else have it.
  HANDLE lockUp(const std::string& name) const {
    return ::CreateFileW((folder.path() / name).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  }
};

TEST_F(WindowsFiles, AreWrittenReadExtendedAndRemoved) {
  files.write("vorn1ops.cfg", "1\r\n2\r\n");
  files.append("vorn1log.txt", "one\r\n");
  files.append("vorn1log.txt", "two\r\n");
  EXPECT_EQ(files.read("vorn1ops.cfg"), "1\r\n2\r\n");
  EXPECT_EQ(files.read("vorn1log.txt"), "one\r\ntwo\r\n");
  EXPECT_EQ(files.size("vorn1log.txt"), 10U);
  files.write("vorn1ops.cfg", "3");
  EXPECT_EQ(folder.read("vorn1ops.cfg"), "3");
  files.remove("vorn1ops.cfg");
  EXPECT_THAT(folder.names(), ElementsAre("vorn1log.txt"));
}

TEST_F(WindowsFiles, AreFoundAndWrittenUnderTheNameThatIsThere) {
  folder.write("Vorn1Ops.CFG", "old");
  EXPECT_THAT(files.find("vorn1ops.cfg"), Optional(std::string("Vorn1Ops.CFG")));
  files.write("vorn1ops.cfg", "new");
  EXPECT_THAT(folder.names(), ElementsAre("Vorn1Ops.CFG"));
  EXPECT_EQ(folder.read("Vorn1Ops.CFG"), "new");
}

TEST_F(WindowsFiles, HaveNamesOfAnyAlphabet) {
  const std::string name = "Žluťoučký 赛车 гонка.rec";
  files.write(name, "fast");
  EXPECT_THAT(files.find(name), Optional(name));
  EXPECT_THAT(files.list("Žluťoučký", ".REC"), ElementsAre(name));
  EXPECT_EQ(files.read(name), "fast");
}

TEST_F(WindowsFiles, FolderMayHaveANameOfAnyAlphabet) {
  const fs::path place = folder.path() / fs::path(u8"Závodník Ω 日本");
  fs::create_directory(place);
  FolderFiles there(place);
  there.write("vorn1ops.cfg", "1");
  EXPECT_EQ(there.read("vorn1ops.cfg"), "1");
  EXPECT_FALSE(there.claim());
  EXPECT_NE(there.lock(), nullptr);
}

TEST_F(WindowsFiles, AFileWhoseNameIsNoTextHidesNoOther) {
  const std::wstring noText = L"half \xD800.rec";
  std::ofstream(folder.path() / noText) << "?";
  folder.write("vorn1a.rec", "!");
  EXPECT_THAT(files.list("vorn1", ".rec"), ElementsAre("vorn1a.rec"));
}

TEST_F(WindowsFiles, NamesNeverLeaveTheFolderNorMeanADevice) {
  for (const std::string name : {"", ".", "..", "a/b", "a\\b", "C:x", "con", "NUL.txt", "com1.cfg", "Lpt9",
                                 "aux .rec", "what?", "all*.rec", "file:stream", "dot.", "blank ", "tab\t"}) {
    EXPECT_THROW(files.write(name, "x"), PlatformError) << name;
    EXPECT_EQ(files.find(name), std::nullopt) << name;
  }
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(WindowsFiles, AReadOnlyFileStaysAsItIsAndIsAFailedCall) {
  folder.write("vorn1ops.cfg", "kept");
  const fs::path path = folder.path() / "vorn1ops.cfg";
  ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(files.read("vorn1ops.cfg"), "kept");
  EXPECT_THROW(files.append("vorn1ops.cfg", "more"), PlatformError);
  EXPECT_THROW(files.write("vorn1ops.cfg", "new"), PlatformError);
  EXPECT_EQ(folder.read("vorn1ops.cfg"), "kept");
  EXPECT_THAT(folder.names(), ElementsAre("vorn1ops.cfg"));  // and nothing half-written
  ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(WindowsFiles, ALockedFileIsAFailedCallAndStaysAsItIs) {
  folder.write("vorn1ops.cfg", "kept");
  const HANDLE held = lockUp("vorn1ops.cfg");
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  EXPECT_THROW(files.read("vorn1ops.cfg"), PlatformError);
  EXPECT_THROW(files.append("vorn1ops.cfg", "more"), PlatformError);
  EXPECT_THROW(files.write("vorn1ops.cfg", "new"), PlatformError);
  ::CloseHandle(held);
  EXPECT_EQ(folder.read("vorn1ops.cfg"), "kept");
  EXPECT_THAT(folder.names(), ElementsAre("vorn1ops.cfg"));
}

TEST_F(WindowsFiles, AFileThatIsLockedForAMomentIsWaitedFor) {
  folder.write("vorn1ops.cfg", "kept");
  const HANDLE held = lockUp("vorn1ops.cfg");
  std::thread holder([held] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    ::CloseHandle(held);
  });
  EXPECT_EQ(files.read("vorn1ops.cfg"), "kept");
  holder.join();
}

TEST_F(WindowsFiles, AFolderInTheirPlaceIsNone) {
  fs::create_directory(folder.path() / "vorn1ops.cfg");
  EXPECT_EQ(files.find("vorn1ops.cfg"), std::nullopt);
  EXPECT_THROW(files.read("vorn1ops.cfg"), PlatformError);
  EXPECT_THROW(files.write("vorn1ops.cfg", "x"), PlatformError);
}

}  // namespace
}  // namespace vorn
