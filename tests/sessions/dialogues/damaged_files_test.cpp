// Every file damaged in its own way: the program starts, and every entry of the menu still does its work.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dialogue.h"

namespace vorn {
namespace {

void damageEverything(const TemporaryFolder& folder) {
  folder.write("vorn1joy.cfg", "x");
  folder.write("vorn1key.cfg", std::string(3, '\0'));
  folder.write("vorn1ops.cfg", "\xFF\xFF\r99999999999999999999");
  folder.write("vorn1voc.cfg", "77\r\n2147483647\r\n-2147483647\r\n2147483647\r\n");
  folder.write("vorn1log.txt", std::string("\0\r\r\r", 4));
  folder.write("vorn1records.txt", "\x1A");
  folder.write("vorn1maple0005.rec", "no record");
}

TEST(DamagedFiles, EveryEntryStillOpens) {
  struct {
    const char* entry;
    const char* script;
  } const entries[] = {
      {" Reed Instructions. ", ""},
      {" reed track descriptions ", "tap Enter\nwait 500\ntap X\n"},
      {" reed log file ", "wait 9000\n"},
      {" delete log file ", "tap Y\n"},
      {" reed records file ", "wait 3000\n"},
      {" reset records ", "tap Enter\ntap Y\n"},
      {" change voice ", "wait say do you wish\nwait 20\ntap Enter\n"},
      {" adjust rate of speech ", "tap Up\ntap X\ntap Down\ntap Enter\n"},
      {" adjust volume ",
       "tap Up\ntap X\ntap Enter\nwait say of the sounds.\nwait 20\ntap Down\nwait 5000\ntap Enter\n"},
      {" Check speakers ", "wait 20000\n"},
      {" reed default joystick configuration ", ""},
      {" configure joystick ", ""},
      {" Reset joystick configuration ", ""},
      {" reed default key board configuration ", ""},
      {" Reset key board configuration ", ""},
      {" change game options ",
       "tap Up\ntap Enter\nwait say for the wall sound?\nwait 20\ntap X\ntap Y\ntap Enter\ntap Enter\ntap "
       "Enter\ntap Enter\n"},
      {" change car engine sound ",
       "wait say  car engine number 1 \nwait 20\ntap Up\ntap Enter\nwait say  Is this \nwait 20\ntap X\ntap "
       "Y\n"},
  };
  for (const auto& [entry, script] : entries) {
    SCOPED_TRACE(entry);
    Dialogue dialogue(entry);
    damageEverything(dialogue.session.folder);
    dialogue.play(script);  // it sees that the program ends in order, in the menu
  }
}

TEST(DamagedFiles, TheDialoguesPutTheirFilesInOrder) {
  Dialogue options(" change game options ");
  damageEverything(options.session.folder);
  options.play(
      "tap Enter\nwait say for the wall sound?\nwait 20\ntap Y\ntap Enter\ntap Enter\ntap Enter\ntap "
      "Enter\n");
  EXPECT_EQ(options.file("vorn1ops.cfg"), "1\r\n1\r\n1\r\n1\r\n1\r\n1\r\n");

  Dialogue volume(" adjust volume ");
  damageEverything(volume.session.folder);
  volume.play("tap Up\ntap Enter\nwait say of the sounds.\nwait 20\ntap Enter\n");
  EXPECT_EQ(volume.file("vorn1voc.cfg"), "77\r\n2147483647\r\n0\r\n0\r\n");
}

}  // namespace
}  // namespace vorn
