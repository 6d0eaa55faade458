// Settings made at the desktop with real keys, and found again at the next start.
// Runs within with_desktop.sh.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "desktop/player.h"
#include "support/voice_settings.h"

namespace vorn {
namespace {

void openMenu(Player& player) {
  player.answer("Space");  // cuts the title sound
  player.waitFor(" Select. Exit Game. ");
}

/// Moves in the menu until `entry` is heard, and takes it.
void choose(Player& player, const std::string& key, const std::vector<std::string>& way) {
  for (const std::string& entry : way) {
    EXPECT_EQ(player.move(key, " "), entry);
  }
  player.answer("Enter");
}

const std::vector<std::string> kWayToKeyboardWizard = {
    " Start Game. ", " change car engine sound ", " change game options ", " Reset key board configuration ",
    " configure key board "};
const std::vector<std::string> kWayToVoice = {
    " Reed Instructions. ", " reed track descriptions ", " reed log file ", " delete log file ",
    " reed records file ",  " reset records ",           " change voice "};

TEST(KeyboardWizard, TakesBriefTapsAndNotTheEnterThatOpenedIt) {
  const TemporaryFolder folder;
  copySounds(folder);
  folder.write("vorn1voc.cfg", kQuickVoice);
  Player player(folder.path());
  openMenu(player);
  choose(player, "Up", kWayToKeyboardWizard);

  const std::vector<std::string> keys = {"RightShift", "RightCtrl", "End",   "Escape", "Space",
                                         "A",          "Left",      "Right", "Up",     "Down",
                                         "LeftCtrl",   "LeftShift", "N",     "Y"};
  for (const std::string& key : keys) {
    EXPECT_THAT(player.waitFor("ress the key"), testing::Not(testing::HasSubstr("already used"))) << key;
    EXPECT_EQ(player.move(key, "ok"), " ok ") << key;
  }
  player.rest(2000);  // it says " ok " once more, and the menu takes its pause
  EXPECT_EQ(player.move("Up", "reed"), " reed default key board configuration ");
  EXPECT_EQ(
      folder.read("vorn1key.cfg"),
      "54\r\n157\r\n207\r\n1\r\n57\r\n30\r\n203\r\n205\r\n200\r\n208\r\n29\r\n42\r\n28\r\n49\r\n21\r\n");
}

TEST(VoiceSettings, AreMadeAndFoundAgain) {
  const TemporaryFolder folder;
  copySounds(folder);
  folder.write("vorn1voc.cfg", kQuickVoice);
  {
    Player player(folder.path());
    openMenu(player);
    choose(player, "Down", kWayToVoice);
    player.waitFor(" do you wish to use this voice? yes ");
    player.answer("N");
    player.waitFor(" do you wish to use this voice? yes ");
    player.answer("Enter");
    choose(player, "Down", {" adjust rate of speech "});
    player.waitFor("15");
    player.answer("Down");
    player.waitFor("14");
    player.answer("Enter");
    choose(player, "Down", {" adjust volume "});
    player.waitFor(" of the voice. ");
    player.answer("Down");
    player.waitFor(" quieter ");
    player.answer("Enter");
    player.waitFor(" of the sounds. ");
    player.answer("Down");
    player.waitFor(" quieter ");
    player.answer("Enter");
    EXPECT_EQ(player.move("Down", " "), " Check speakers ");
  }
  EXPECT_EQ(folder.read("vorn1voc.cfg"), "1\r\n14\r\n85\r\n-100\r\n");
  {
    Player player(folder.path());
    openMenu(player);
    std::vector<std::string> way = kWayToVoice;
    way.push_back(" adjust rate of speech ");
    choose(player, "Down", way);
    player.waitFor("14");
    player.answer("Enter");
    player.move("Down", " adjust volume ");
  }
  EXPECT_EQ(folder.read("vorn1voc.cfg"), "1\r\n14\r\n85\r\n0\r\n") << "the sounds are as loud as ever";
}

}  // namespace
}  // namespace vorn
