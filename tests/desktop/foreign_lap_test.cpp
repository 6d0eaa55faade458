// A lap at the desktop with the game for another system, which VORN_OTHER_PROGRAM names: real keys into
// its window, guided by its captions, and what it plays listened to.
// Runs within with_desktop.sh --record.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "desktop/driver.h"
#include "desktop/player.h"
#include "desktop/recording.h"
#include "support/temporary_folder.h"

namespace vorn {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(ForeignLap, IsDrivenFromTheMenuToTheRecord) {
  const TemporaryFolder folder;
  copySounds(folder);
  // No marks of speed and no gears, so that every number heard is a position.
  folder.write("vorn1ops.cfg", "1\r\n2\r\n2\r\n1\r\n2\r\n1\r\n");
  const Recording recording;
  Player player(folder.path(), {}, "auto");

  player.waitFor(" Select. Exit Game. ", 120);
  player.move("Up", " Start Game. ");
  player.answer("Enter");
  player.enterOneLap();
  player.rest(4500);
  player.startEngine();
  const double idling = recording.now();
  player.goAtTheHorn();
  player.rest(1500);
  const double racing = recording.now();

  PositionDriver driver(player);
  const std::string result = driver.driveToTheEnd(600);
  player.keys.release("LeftCtrl");
  EXPECT_THAT(result, StartsWith(" Your time for 1 lap on the Maple Leaf Tri Oval Track is, "));

  player.enterRecordAndLeave();
  EXPECT_EQ(player.waitForEnd(), 0);

  EXPECT_EQ(folder.read("vorn1maple0001.rec").size(), 26U + 4 * 1);
  EXPECT_THAT(folder.read("vorn1records.txt"), HasSubstr("By a\r\n"));
  EXPECT_GT(recording.level(idling + 2.0, 2), 0.005);
  EXPECT_GT(recording.level(racing, 2), 0.02);
}

}  // namespace
}  // namespace vorn
