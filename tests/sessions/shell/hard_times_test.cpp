// Folders that cannot be written, files that cannot be read, full disks: the game
// goes on and says once what could not be kept, and nothing that was there is lost.

#include "sessions/shell/hard_times.h"

#include <gmock/gmock.h>

#include <memory>

#include "sessions/shell/story.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

const std::string kDefaultMap = "0\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n1\r\n1\r\n";

class HardTimes : public testing::Test {
 protected:
  ~HardTimes() override { makeWritable(s.folder.path()); }

  std::filesystem::path path(const std::string& name) const { return s.folder.path() / name; }
  // The program has ended with an error that names `file`.
  void expectErrorAbout(const std::string& file) {
    EXPECT_EQ(s.exitStatus(), 1);
    ASSERT_THAT(s.trace().texts("error"), SizeIs(1));
    EXPECT_THAT(s.trace().texts("error").front(), HasSubstr(file));
    EXPECT_THAT(s.diagnostics(), HasSubstr(file));
    EXPECT_EQ(storyOf(s.trace()).back(), "end 1");
  }
  // The program has gone on to its end and has said this of what was lost, once each.
  void expectSaid(const std::vector<std::string>& complaints) {
    EXPECT_EQ(s.exitStatus(), 0) << s.diagnostics();
    std::vector<std::string> said;
    for (const std::string& text : only(storyOf(s.trace()), {"say  Sorry", "queue  Sorry"}))
      said.push_back(text);
    EXPECT_EQ(said, complaints);
    EXPECT_EQ(storyOf(s.trace()).back(), "end 0");
  }
  // What stands in a file that nobody may read.
  std::string kept(const std::string& name) {
    std::filesystem::permissions(path(name), std::filesystem::perms(0644));
    return s.folder.read(name);
  }
  // No file that was half written stays in the folder.
  void expectNoLeftovers() { EXPECT_THAT(s.folder.names(), Not(Contains(StartsWith(".")))); }

  // From the prompt for the name to the writing of the record.
  void takeName(const std::function<void()>& meanwhile) {
    s.script(raceOver() + finish({}) + "wait say  Enter your name\nwait 20\ntype bo\ntap Enter\nwait 50\n")
        .meanwhile(meanwhile)
        .script("tap Enter\nwait 60000\n")
        .run();
  }

  Session s;
};

const std::string kOldRecord = "old record";  // damaged: the race sets a new one

const std::string kLogLost = "queue  Sorry, but the log could not be saved. ";
const std::string kRecordLost = "queue  Sorry, but the record could not be saved. ";
const std::string kSettingsLost = "queue  Sorry, but the settings could not be saved. ";
const std::string kSettingsUnread = "say  Sorry, but some settings could not be read. ";

// --- folders that cannot be written ---

TEST_F(HardTimes, ReadOnlyFolderIsPlayedInFromStartToResults) {
  const Story before = s.folder.names();
  makeReadOnly(s.folder.path());
  const OrdinaryRights rights;
  s.script(raceOver() + finish({}) + "wait say  Enter your name\nwait 20\ntype bo\ntap Enter\nwait 50\n" +
           "tap Enter\nwait say  Select, repeat race time \nwait 500\ntap Enter\nwait 500\nclose\n")
      .run();
  expectSaid({kLogLost, kRecordLost});
  EXPECT_EQ(s.folder.names(), before);
  // The log is complained of after the title, the record after its name; results are told all the same, and
  // again.
  const Story told =
      only(speechIn(storyOf(s.trace())), {"say  Vorn 1 tts", "queue  Sorry", "queue  Your time",
                                          "queue  Enter your name", "queue  Select, repeat"});
  EXPECT_THAT(told,
              ElementsAre("say  Vorn 1 tts version 2 By Ostrin ", kLogLost, StartsWith("queue  Your time"),
                          "queue  Enter your name as the new record holder. ", kRecordLost,
                          "queue  Select, repeat race time ", StartsWith("queue  Your time")));
}

TEST_F(HardTimes, ReadOnlyFolderKeepsABadMap) {
  s.folder.write("vorn1joy.cfg", "1\r\n");
  makeReadOnly(s.folder.path());
  const OrdinaryRights rights;
  s.script(atMainMenu() + "close\n").run();
  expectSaid({kLogLost, kSettingsLost});
  EXPECT_TRUE(s.trace().said(" The joystick has been reset back to default settings."));
  EXPECT_EQ(s.folder.read("vorn1joy.cfg"), "1\r\n");
}

TEST_F(HardTimes, FolderThatHasBecomeReadOnlyKeepsTheOldRecord) {
  s.folder.write("vorn1maple0001.rec", kOldRecord);
  const OrdinaryRights rights;
  takeName([&] { makeReadOnly(s.folder.path()); });
  expectSaid({kRecordLost});
  EXPECT_EQ(s.folder.read("vorn1maple0001.rec"), kOldRecord);
  EXPECT_THAT(s.folder.read("vorn1log.txt"),
              HasSubstr(" You finished the race with 20.5 gallons of fuel. \r\n"));
  EXPECT_FALSE(s.folder.has("vorn1records.txt"));
  expectNoLeftovers();
}

TEST_F(HardTimes, LogAndRecordsThatCannotBeDeletedAreNotSaidToBe) {
  s.folder.write("vorn1maple0001.rec", kOldRecord);
  const OrdinaryRights rights;
  s.script(atMainMenu())
      .meanwhile([&] { makeReadOnly(s.folder.path()); })
      .script(menuDown(4) + menuEnter() + "wait say  Are you sure\nwait 20\ntap Y\nwait 500\n" + menuDown(2) +
              menuEnter() +
              "wait say  select the track record\nwait 20\ntap Enter\nwait 50\ntap Y\nwait 500\nclose\n")
      .run();
  expectSaid({kLogLost, kRecordLost});
  EXPECT_FALSE(s.trace().said(" has been deleted. "));
  EXPECT_FALSE(s.trace().said(" have been reset. "));
  EXPECT_TRUE(s.folder.has("vorn1log.txt"));
  EXPECT_TRUE(s.folder.has("vorn1maple0001.rec"));
}

TEST_F(HardTimes, ReadOnlyFilesAreNotReplacedForThePlayerAlone) {
  // A settings file that may be read only is replaced whole: its folder decides.
  s.folder.write("vorn1voc.cfg", "0\r\n0\r\n90\r\n0\r\n");
  std::filesystem::permissions(path("vorn1voc.cfg"), std::filesystem::perms(0444));
  const OrdinaryRights rights;
  s.script(atMainMenu() + menuDown(8) + menuEnter() +
           "wait say to adjust\nwait 20\ntap Up\nwait 20\ntap Enter\nwait 500\n")
      .run();
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_EQ(s.folder.read("vorn1voc.cfg"), "0\r\n1\r\n90\r\n0\r\n");
}

// --- full disks ---

TEST_F(HardTimes, FullDiskKeepsTheOldRecord) {
  s.folder.write("vorn1maple0001.rec", kOldRecord);
  std::unique_ptr<FullDisk> disk;
  takeName([&] { disk = std::make_unique<FullDisk>(20); });
  disk.reset();
  expectSaid({kRecordLost});
  EXPECT_EQ(s.folder.read("vorn1maple0001.rec"), kOldRecord);
  EXPECT_FALSE(s.folder.has("vorn1records.txt"));
  expectNoLeftovers();
}

TEST_F(HardTimes, DiskThatIsFullAfterTheRecordKeepsItAndTheOldSummary) {
  s.folder.write("vorn1records.txt", "old summary\r\n");
  std::unique_ptr<FullDisk> disk;
  takeName([&] { disk = std::make_unique<FullDisk>(40); });  // a record of two letters takes 34
  disk.reset();
  expectSaid({kRecordLost});
  EXPECT_EQ(s.folder.read("vorn1maple0001.rec").size(), 34u);
  EXPECT_EQ(s.folder.read("vorn1records.txt"), "old summary\r\n");
  expectNoLeftovers();
}

TEST_F(HardTimes, FullDiskLeavesNoHalfLineInTheLog) {
  const std::string old(1000, 'x');
  s.folder.write("vorn1log.txt", old);
  {
    const FullDisk disk(1010);
    s.script(atMainMenu() + "close\n").run();
  }
  expectSaid({kLogLost});
  EXPECT_EQ(s.folder.read("vorn1log.txt"), old);
}

TEST_F(HardTimes, FullDiskLeavesNoHalfResultInTheLog) {
  std::unique_ptr<FullDisk> disk;
  s.script(raceOver() + finish({}))
      .meanwhile([&] { disk = std::make_unique<FullDisk>(kLogHeader.size() + 120); })
      .script("wait 60000\n")
      .run();
  disk.reset();
  expectSaid({kLogLost});
  // The time found room, the three lines of the record did not.
  EXPECT_EQ(
      s.folder.read("vorn1log.txt"),
      kLogHeader +
          " Your time for 1 lap on the Maple Leaf Tri Oval Track is, 1 minute 15 point 5 0 0 seconds. \r\n");
  EXPECT_TRUE(s.trace().said(" You finished the race with 20.5 gallons of fuel. "));
}

TEST_F(HardTimes, FullDiskKeepsTheOldSettings) {
  s.folder.write("vorn1voc.cfg", "1\r\n2\r\n80\r\n0\r\n");
  std::unique_ptr<FullDisk> disk;
  s.script(atMainMenu() + menuDown(8) + menuEnter() + "wait say to adjust\nwait 20\ntap Up\nwait 20\n")
      .meanwhile([&] { disk = std::make_unique<FullDisk>(3); })
      .script("tap Enter\nwait 600\nclose\n")
      .run();
  disk.reset();
  expectSaid({kSettingsLost});
  EXPECT_EQ(s.folder.read("vorn1voc.cfg"), "1\r\n2\r\n80\r\n0\r\n");
  expectNoLeftovers();
}

TEST_F(HardTimes, FullDiskKeepsABadMap) {
  s.folder.write("vorn1key.cfg", "54\r\n");
  {
    const FullDisk disk(5);
    s.script(atMainMenu() + "close\n").run();
  }
  expectSaid({kLogLost, kSettingsLost});
  EXPECT_EQ(s.folder.read("vorn1key.cfg"), "54\r\n");
  expectNoLeftovers();
}

// --- files that cannot be read ---

TEST_F(HardTimes, UnreadableSettingsLeaveTheirStartValues) {
  for (const char* name : {"vorn1joy.cfg", "vorn1key.cfg", "vorn1ops.cfg", "vorn1voc.cfg"}) {
    s.folder.write(name, "2\r\n5\r\n70\r\n0\r\n");
    makeUnreadable(path(name));
    {
      const OrdinaryRights rights;
      s.script(
           atMainMenu() +
           get({"joyMapSpeedometer", "keyMapGas", "wallSound", "voiceIndex", "speechRate", "voiceVolume"}) +
           "close\n")
          .run();
    }
    expectSaid({kSettingsUnread});
    EXPECT_THAT(only(storyOf(s.trace()), {"value "}),
                ElementsAre("value joyMapSpeedometer 0", "value keyMapGas 29", "value wallSound 1",
                            "value voiceIndex 0", "value speechRate 0", "value voiceVolume 90"));
    EXPECT_EQ(kept(name), "2\r\n5\r\n70\r\n0\r\n");
    std::filesystem::remove(path(name));
  }
}

TEST_F(HardTimes, UnreadableLogIsNone) {
  s.folder.write("vorn1log.txt", "old\r\n");
  makeUnreadable(path("vorn1log.txt"));
  {
    const OrdinaryRights rights;
    s.script(atMainMenu() + menuDown(3) + menuEnter() + "wait 1000\nclose\n").run();
  }
  expectSaid({kLogLost});
  EXPECT_TRUE(s.trace().said(" sorry, there was no log file to reed. "));
  EXPECT_EQ(kept("vorn1log.txt"), "old\r\n");
}

TEST_F(HardTimes, UnreadableRecordIsNotReplaced) {
  s.folder.write("vorn1maple0001.rec", kOldRecord);
  makeUnreadable(path("vorn1maple0001.rec"));
  const auto rights = std::make_unique<OrdinaryRights>();
  takeName([] {});
  expectSaid({kRecordLost});
  EXPECT_EQ(kept("vorn1maple0001.rec"), kOldRecord);
}

TEST_F(HardTimes, UnreadableSoundIsABadOne) {
  const std::string bytes = s.folder.read("vorn9.wav");
  s.folder.write("vorn9.wav", bytes);
  makeUnreadable(path("vorn9.wav"));
  {
    const OrdinaryRights rights;
    s.script("wait 60000\n").run();
  }
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_TRUE(
      s.trace().said("Sorry, but one or more of the wave files seem to be corrupt. Please contact, Ostrin."));
}

// --- sounds that go while the game runs ---

TEST_F(HardTimes, SoundThatHasGoneEndsTheProgramAtStartGame) {
  s.script(atMainMenu() + menuUp())
      .meanwhile([&] { std::filesystem::remove(path("vorn29.wav")); })
      .script(menuEnter() + "wait 60000\n")
      .run();
  expectErrorAbout("vorn29.wav");
}

}  // namespace
}  // namespace vorn
