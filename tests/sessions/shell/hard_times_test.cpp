// Folders that cannot be written, files that cannot be read, full disks: the
// program ends with a clear error, and nothing that was there is lost.

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

// --- folders that cannot be written ---

TEST_F(HardTimes, ReadOnlyFolderEndsTheStart) {
  const Story before = s.folder.names();
  makeReadOnly(s.folder.path());
  const OrdinaryRights rights;
  s.script("wait 50\ntap Space\nwait 60000\n").run();
  expectErrorAbout("vorn1log.txt");
  EXPECT_EQ(s.folder.names(), before);
}

TEST_F(HardTimes, ReadOnlyFolderKeepsABadMap) {
  s.folder.write("vorn1joy.cfg", "1\r\n");
  makeReadOnly(s.folder.path());
  const OrdinaryRights rights;
  s.script("wait 60000\n").run();
  expectErrorAbout("vorn1joy.cfg");
  EXPECT_EQ(s.folder.read("vorn1joy.cfg"), "1\r\n");
}

TEST_F(HardTimes, FolderThatHasBecomeReadOnlyKeepsTheOldRecord) {
  s.folder.write("vorn1maple0001.rec", kOldRecord);
  const OrdinaryRights rights;
  takeName([&] { makeReadOnly(s.folder.path()); });
  expectErrorAbout("vorn1maple0001.rec");
  EXPECT_EQ(s.folder.read("vorn1maple0001.rec"), kOldRecord);
  EXPECT_THAT(s.folder.read("vorn1log.txt"),
              HasSubstr(" You finished the race with 20.5 gallons of fuel. \r\n"));
  EXPECT_FALSE(s.folder.has("vorn1records.txt"));
  expectNoLeftovers();
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
  expectErrorAbout("vorn1maple0001.rec");
  EXPECT_EQ(s.folder.read("vorn1maple0001.rec"), kOldRecord);
  EXPECT_FALSE(s.folder.has("vorn1records.txt"));
  expectNoLeftovers();
}

TEST_F(HardTimes, DiskThatIsFullAfterTheRecordKeepsItAndTheOldSummary) {
  s.folder.write("vorn1records.txt", "old summary\r\n");
  std::unique_ptr<FullDisk> disk;
  takeName([&] { disk = std::make_unique<FullDisk>(40); });  // a record of two letters takes 34
  disk.reset();
  expectErrorAbout("vorn1records.txt");
  EXPECT_EQ(s.folder.read("vorn1maple0001.rec").size(), 34u);
  EXPECT_EQ(s.folder.read("vorn1records.txt"), "old summary\r\n");
  expectNoLeftovers();
}

TEST_F(HardTimes, FullDiskLeavesNoHalfLineInTheLog) {
  const std::string old(1000, 'x');
  s.folder.write("vorn1log.txt", old);
  {
    const FullDisk disk(1010);
    s.script("wait 50\ntap Space\nwait 60000\n").run();
  }
  expectErrorAbout("vorn1log.txt");
  EXPECT_EQ(s.folder.read("vorn1log.txt"), old);
}

TEST_F(HardTimes, FullDiskLeavesNoHalfResultInTheLog) {
  std::unique_ptr<FullDisk> disk;
  s.script(raceOver() + finish({}))
      .meanwhile([&] { disk = std::make_unique<FullDisk>(kLogHeader.size() + 120); })
      .script("wait 60000\n")
      .run();
  disk.reset();
  expectErrorAbout("vorn1log.txt");
  // The time found room, the three lines of the record did not.
  EXPECT_EQ(
      s.folder.read("vorn1log.txt"),
      kLogHeader +
          " Your time for 1 lap on the Maple Leaf Tri Oval Track is, 1 minute 15 point 5 0 0 seconds. \r\n");
  EXPECT_FALSE(s.folder.has("vorn1maple0001.rec"));
}

TEST_F(HardTimes, FullDiskKeepsTheOldSettings) {
  s.folder.write("vorn1voc.cfg", "1\r\n2\r\n80\r\n0\r\n");
  std::unique_ptr<FullDisk> disk;
  s.script(atMainMenu() + menuDown(8) + menuEnter() + "wait say to adjust\nwait 20\ntap Up\nwait 20\n")
      .meanwhile([&] { disk = std::make_unique<FullDisk>(3); })
      .script("tap Enter\nwait 60000\n")
      .run();
  disk.reset();
  expectErrorAbout("vorn1voc.cfg");
  EXPECT_EQ(s.folder.read("vorn1voc.cfg"), "1\r\n2\r\n80\r\n0\r\n");
  expectNoLeftovers();
}

TEST_F(HardTimes, FullDiskKeepsABadMap) {
  s.folder.write("vorn1key.cfg", "54\r\n");
  {
    const FullDisk disk(5);
    s.script("wait 60000\n").run();
  }
  expectErrorAbout("vorn1key.cfg");
  EXPECT_EQ(s.folder.read("vorn1key.cfg"), "54\r\n");
  expectNoLeftovers();
}

// --- files that cannot be read ---

TEST_F(HardTimes, UnreadableMapsAndOptionsEndTheStart) {
  for (const char* name : {"vorn1joy.cfg", "vorn1key.cfg", "vorn1ops.cfg"}) {
    s.folder.write(name, kDefaultMap);
    makeUnreadable(path(name));
    {
      const OrdinaryRights rights;
      s.script("wait 60000\n").run();
    }
    expectErrorAbout(name);
    EXPECT_EQ(kept(name), kDefaultMap);
    std::filesystem::remove(path(name));
  }
}

// The start itself carries on where the voice's settings cannot be read.
TEST_F(HardTimes, UnreadableVoiceSettingsAreNone) {
  s.folder.write("vorn1voc.cfg", "2\r\n5\r\n70\r\n0\r\n");
  makeUnreadable(path("vorn1voc.cfg"));
  {
    const OrdinaryRights rights;
    s.script(atMainMenu() + get({"voiceIndex", "speechRate", "voiceVolume"})).run();
  }
  EXPECT_EQ(s.exitStatus(), 0);
  EXPECT_THAT(only(storyOf(s.trace()), {"value "}),
              ElementsAre("value voiceIndex 0", "value speechRate 0", "value voiceVolume 90"));
  EXPECT_EQ(kept("vorn1voc.cfg"), "2\r\n5\r\n70\r\n0\r\n");
}

TEST_F(HardTimes, UnreadableLogEndsTheStart) {
  s.folder.write("vorn1log.txt", "old\r\n");
  makeUnreadable(path("vorn1log.txt"));
  {
    const OrdinaryRights rights;
    s.script("wait 50\ntap Space\nwait 60000\n").run();
  }
  expectErrorAbout("vorn1log.txt");
  EXPECT_EQ(kept("vorn1log.txt"), "old\r\n");
}

TEST_F(HardTimes, UnreadableRecordIsNotReplaced) {
  s.folder.write("vorn1maple0001.rec", kOldRecord);
  makeUnreadable(path("vorn1maple0001.rec"));
  {
    const OrdinaryRights rights;
    s.script(raceOver() + finish({}) + "wait 60000\n").run();
  }
  expectErrorAbout("vorn1maple0001.rec");
  EXPECT_EQ(kept("vorn1maple0001.rec"), kOldRecord);
}

TEST_F(HardTimes, UnreadableSoundEndsTheStart) {
  const std::string bytes = s.folder.read("vorn9.wav");
  s.folder.write("vorn9.wav", bytes);
  makeUnreadable(path("vorn9.wav"));
  {
    const OrdinaryRights rights;
    s.script("wait 60000\n").run();
  }
  expectErrorAbout("vorn9.wav");
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
