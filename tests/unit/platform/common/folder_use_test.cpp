#include "platform/common/folder_use.h"

#include <gtest/gtest.h>

#include <thread>

#include "support/temporary_folder.h"

namespace vorn {
namespace {

TEST(FolderUse, FirstProgramFindsTheFolderFree) {
  TemporaryFolder folder;
  FolderUse first(folder.path());
  EXPECT_FALSE(first.claim());
}

TEST(FolderUse, SecondProgramFindsItInUse) {
  TemporaryFolder folder;
  FolderUse first(folder.path()), second(folder.path());
  first.claim();
  EXPECT_TRUE(second.claim());
}

TEST(FolderUse, MarkGoesWithItsProgram) {
  TemporaryFolder folder;
  { FolderUse(folder.path()).claim(); }
  FolderUse next(folder.path());
  EXPECT_FALSE(next.claim());
}

TEST(FolderUse, LeavesNoFile) {
  TemporaryFolder folder;
  FolderUse use(folder.path());
  use.claim();
  const auto lock = use.lock();
  EXPECT_TRUE(folder.names().empty());
}

TEST(FolderUse, LockKeepsAnotherProgramWaitingUntilItIsGivenUp) {
  TemporaryFolder folder;
  FolderUse first(folder.path()), second(folder.path());
  first.claim();
  second.claim();
  auto held = first.lock();
  ASSERT_NE(held, nullptr);
  std::thread giver([&] { held.reset(); });
  EXPECT_NE(second.lock(), nullptr);
  giver.join();
}

TEST(FolderUse, LockIsGivenUpForAfterASecond) {
  TemporaryFolder folder;
  FolderUse first(folder.path()), second(folder.path());
  const auto held = first.lock();
  EXPECT_EQ(second.lock(), nullptr);
}

TEST(FolderUse, FolderThatIsNotThereCanBeNeitherMarkedNorLocked) {
  TemporaryFolder folder;
  FolderUse use(folder.path() / "gone");
  EXPECT_FALSE(use.claim());
  EXPECT_EQ(use.lock(), nullptr);
}

}  // namespace
}  // namespace vorn
