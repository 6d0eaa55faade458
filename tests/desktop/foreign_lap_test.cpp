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
  player.answer("Up");
  player.waitFor(" Start Game. ");
  player.answer("Enter");
  player.waitFor(" Select the track you wish to run, Maple Leaf Try Oval ");
  player.answer("Enter");
  player.waitFor(" Enter the number of laps that you wish to run. ", 60);
  player.answer("1");
  player.waitFor("1");
  player.answer("Enter");
  player.waitFor(" Is 1 correct for the number of laps to run?  yes ");
  player.answer("Enter");

  player.waitFor(" Ladies and Gentlemen, Start Your Engines! ", 60);
  player.rest(4500);
  player.keys.press("End");
  player.waitFor(" 10 ", 30);
  player.keys.release("End");
  const double idling = recording.now();
  player.waitFor(" 1 ");
  player.rest(1300);
  player.keys.press("LeftCtrl");
  player.keys.tap("Up", 150);
  player.rest(1500);
  const double racing = recording.now();

  PositionDriver driver(player);
  const std::string result = driver.driveToTheEnd(600);
  player.keys.release("LeftCtrl");
  EXPECT_THAT(result, StartsWith(" Your time for 1 lap on the Maple Leaf Tri Oval Track is, "));

  player.waitFor(" Enter your name as the new record holder. ", 60);
  player.answer("A");
  player.waitFor("a");
  player.answer("Enter");
  player.waitFor(" Is a correct, for the new record holder? yes ");
  player.answer("Enter");
  player.waitFor(" Select, repeat race time ");
  player.answer("Up");
  player.waitFor(" Exit game ");
  player.answer("Enter");
  player.waitFor(" exiting program ", 60);
  EXPECT_EQ(player.waitForEnd(), 0);

  EXPECT_EQ(folder.read("vorn1maple0001.rec").size(), 26U + 4 * 1);
  EXPECT_THAT(folder.read("vorn1records.txt"), HasSubstr("By a\r\n"));
  EXPECT_GT(recording.level(idling + 2.0, 2), 0.005);
  EXPECT_GT(recording.level(racing, 2), 0.02);
}

}  // namespace
}  // namespace vorn
