#include "codriver/ghost_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/common/folder_files.h"
#include "support/temporary_folder.h"

namespace vorn {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

GhostLap lapOf(double ticks, std::size_t places = 1) {
  GhostLap lap{{}, ticks, {}};
  for (std::size_t i = 0; i < places; ++i) lap.places.push_back({static_cast<double>(i + 1), 0, 50});
  return lap;
}

class GhostStore : public testing::Test {
 protected:
  TemporaryFolder folder;
  FolderFiles files{folder.path()};
};

TEST_F(GhostStore, KeepsTheBetterLapWhoeverComesLast) {
  EXPECT_EQ(keepGhosts(files, 3, {lapOf(500)}), "");
  EXPECT_EQ(keepGhosts(files, 3, {lapOf(600)}), "");
  EXPECT_EQ(keptGhosts(files, 3).ghosts.at(0).ticks, 500);
  EXPECT_EQ(keepGhosts(files, 3, {lapOf(400)}), "");
  EXPECT_EQ(keptGhosts(files, 3).ghosts.at(0).ticks, 400);
  EXPECT_THAT(folder.names(), testing::Contains("vorn1chagrin.ghost"));
}

TEST_F(GhostStore, WritesNothingWhereNothingIsBetter) {
  keepGhosts(files, 3, {lapOf(500)});
  const auto before = std::filesystem::last_write_time(folder.path() / "vorn1chagrin.ghost");
  keepGhosts(files, 3, {lapOf(500)});
  EXPECT_EQ(std::filesystem::last_write_time(folder.path() / "vorn1chagrin.ghost"), before);
}

TEST_F(GhostStore, LeavesOutALapThatIsTooLong) {
  keepGhosts(files, 3, {lapOf(4000, kMostGhostPlaces + 1)});
  EXPECT_FALSE(folder.has("vorn1chagrin.ghost"));
  keepGhosts(files, 3, {lapOf(4000, kMostGhostPlaces)});
  EXPECT_THAT(keptGhosts(files, 3).ghosts, SizeIs(1));
}

TEST_F(GhostStore, AFileOfAnotherTrackIsDamaged) {
  keepGhosts(files, 3, {lapOf(500)});
  folder.write("vorn1maple.ghost", folder.read("vorn1chagrin.ghost"));
  EXPECT_EQ(keptGhosts(files, 1).word, " The ghost of the Maple Leaf Tri Oval Track is damaged. ");
  EXPECT_THAT(keptGhosts(files, 1).ghosts, IsEmpty());
}

TEST_F(GhostStore, TellsWhereItCannotWrite) {
  std::filesystem::create_directory(folder.path() / "vorn1chagrin.ghost");
  EXPECT_EQ(keepGhosts(files, 3, {lapOf(500)}), " The ghost could not be kept. ");
}

TEST_F(GhostStore, AFriendsLapsAreKeptApartFromTheOwnOnes) {
  keepGhosts(files, 3, {lapOf(500)});
  const std::string sent = encodeGhosts({.track = 3, .ghosts = {lapOf(450)}});
  EXPECT_TRUE(importGhosts(files, sent).isDone);
  EXPECT_EQ(keptGhosts(files, 3).ghosts.at(0).ticks, 500);
  EXPECT_EQ(friendsGhosts(files, 3).ghosts.at(0).ticks, 450);
  EXPECT_FALSE(importGhosts(files, sent.substr(1)).isDone);
  EXPECT_EQ(friendsGhosts(files, 3).ghosts.at(0).ticks, 450) << "a damaged file changes nothing";
}

}  // namespace
}  // namespace vorn
