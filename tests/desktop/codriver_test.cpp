// The co-driver at the desktop, with real keys: what is said is recognised in what the sound device has
// played. Runs within with_desktop.sh --record.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "desktop/player.h"
#include "desktop/recording.h"
#include "support/temporary_folder.h"

namespace vorn {
namespace {

using testing::HasSubstr;

TEST(Codriver, TellsOfItselfAndOpensItsMenuAtF2) {
  const TemporaryFolder folder;
  copySounds(folder);
  const Recording recording;
  Player player(folder.path());
  EXPECT_THAT(player.waitFor(" co-driver"), HasSubstr(" F 2 "));
  player.waitFor(" Select. Exit Game. ");
  player.rest(500);
  player.answer("F2");
  player.waitFor(" Co-driver. ");
  player.rest(1500);
  EXPECT_THAT(player.move("Up", " Keys. "), HasSubstr(" What the function keys do. "));
  EXPECT_TRUE(
      recording.isUnderstood("keys what the function keys do | select exit game | check speakers | lessons "
                             "six short ones on real tracks",
                             3.4, [&] {
                               player.move("Down", " ");
                               player.move("Up", " Keys. ");
                               const double start = recording.now() - Recording::kBeforeCaption;
                               player.rest(3100);
                               return start;
                             }));
  player.answer("Escape");
  player.waitFor(" Select. Exit Game. ");
  player.rest(500);
  player.move("Enter", " Thank you for playing Vorn 1 tts, By Ostrin. ");
  EXPECT_EQ(player.waitForEnd(), 0);
}

}  // namespace
}  // namespace vorn
