// A whole race at the desktop, played as a blind player plays it: real keys into
// the real window, guided by nothing but what the game says. What came out of the
// sound device is recorded and listened to.
// Runs within with_desktop.sh --record.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "desktop/driver.h"
#include "desktop/player.h"
#include "desktop/recording.h"
#include "support/temporary_folder.h"

namespace vorn {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(WholeRace, IsDrivenByEarFromTheTitleToTheRecord) {
  const TemporaryFolder folder;
  copySounds(folder);
  // No marks of speed and no gears, so that every number heard is a position.
  folder.write("vorn1ops.cfg", "1\r\n2\r\n2\r\n1\r\n2\r\n1\r\n");
  const Recording recording;
  Player player(folder.path());

  player.waitFor(" Select. Exit Game. ");
  const auto selectStartGame = [&] {
    EXPECT_EQ(player.move("Up", "Game."), " Start Game. ");
    return recording.now() - Recording::kBeforeCaption;
  };
  selectStartGame();
  EXPECT_TRUE(recording.isUnderstood("start game | exit game | check speakers | change voice", 2.5, [&] {
    player.move("Down", " Exit Game. ");
    const double entry = selectStartGame();
    player.rest(2200);
    return entry;
  }));
  bool isOnTrack = false;
  EXPECT_TRUE(recording.isUnderstood(
      "ladies and gentlemen start your engines | ladies and gentlemen stop your engines | "
      "go to main menu | enter the number of laps that you wish to run",
      3.4, [&] {
        if (std::exchange(isOnTrack, true)) {
          player.answer("Escape");
          player.waitFor(" Select. Exit Game. ");
          selectStartGame();
        }
        player.answer("Enter");
        player.enterOneLap();
        const double call = recording.now() - Recording::kBeforeCaption;
        player.rest(3100);
        return call;
      }));
  player.rest(1400);
  player.startEngine();
  const double idling = recording.now();
  player.goAtTheHorn();
  player.rest(1500);
  const double racing = recording.now();

  PositionDriver driver(player);
  const std::string result = driver.driveToTheEnd(400);
  player.keys.release("LeftCtrl");
  EXPECT_THAT(result, StartsWith(" Your time for 1 lap on the Maple Leaf Tri Oval Track is, "));
  EXPECT_THAT(result, HasSubstr(" Which sets a new record! "));
  EXPECT_LE(driver.crashes(), 2);

  player.enterRecordAndLeave();
  EXPECT_EQ(player.waitForEnd(), 0);

  EXPECT_EQ(folder.read("vorn1maple0001.rec").size(), 26u + 4 * 1);
  EXPECT_THAT(folder.read("vorn1records.txt"), HasSubstr("By a\r\n"));
  EXPECT_THAT(folder.read("vorn1log.txt"), HasSubstr(" Which sets a new record! \r\n"));
  // The engine at full gas is higher than it idled.
  EXPECT_GT(recording.level(racing, 2), 0.02);
  EXPECT_GT(recording.steepness(racing, 2), 2 * recording.steepness(idling + 3.5, 2));
}

}  // namespace
}  // namespace vorn
