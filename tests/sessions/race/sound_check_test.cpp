// The check of the 108 sounds against the real ones.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "race/drive_train.h"
#include "sessions/race/race_scene.h"
#include "sound/catalogue.h"
#include "sound/loading.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

class SoundCheck : public testing::Test {
 protected:
  SoundCheck() { linkSounds(folder); }

  // The bytes of a sound, which from now on is a file of this test alone.
  std::string take(const std::string& name) {
    const std::string bytes = folder.read(name);
    fs::remove(folder.path() / name);
    return bytes;
  }

  int check() {
    HeadlessOptions options;
    options.folder = folder.path();
    HeadlessPlatform platform(options, {});
    GameState g(platform);
    checkwaves(g);
    return g.waveFilesBad;
  }

  TemporaryFolder folder;
};

TEST_F(SoundCheck, PassesTheSoundsThatWereMade) {
  EXPECT_EQ(check(), 0);
}

TEST_F(SoundCheck, SaysNothing) {
  HeadlessOptions options;
  options.folder = folder.path();
  GameRig rig(Wheel::kKeys, options);
  EXPECT_THAT(rig.told(checkwaves), IsEmpty());
  EXPECT_EQ(rig.timed(checkwaves), 0);
}

TEST_F(SoundCheck, PassesANameInOtherCase) {
  folder.write("VORN1T5.Wav", take("vorn1t5.wav"));
  EXPECT_EQ(check(), 0);
}

TEST_F(SoundCheck, FindsEveryMissingFile) {
  for (const CatalogueEntry& entry : soundCatalogue()) {
    const fs::path sound = folder.path() / soundFileName(entry.name);
    fs::rename(sound, folder.path() / "away");
    EXPECT_EQ(check(), 1) << sound;
    fs::rename(folder.path() / "away", sound);
  }
}

TEST_F(SoundCheck, FindsAFolderInTheFilesPlace) {
  take("vorn9.wav");
  fs::create_directory(folder.path() / "vorn9.wav");
  EXPECT_EQ(check(), 1);
}

TEST_F(SoundCheck, FindsAFileThatIsAByteShortOrLong) {
  const std::string bytes = take("vorn34.wav");
  folder.write("vorn34.wav", bytes.substr(0, bytes.size() - 1));
  EXPECT_EQ(check(), 1);
  folder.write("vorn34.wav", bytes + '\0');
  EXPECT_EQ(check(), 1);
  folder.write("vorn34.wav", bytes);
  EXPECT_EQ(check(), 0);
}

TEST_F(SoundCheck, FindsAChangedByteThatMovesAnItem) {
  std::string bytes = take("vorn12.wav");  // 126 items
  const std::size_t comma = bytes.find(',');
  ASSERT_NE(comma, std::string::npos);
  bytes[comma] = 'x';
  folder.write("vorn12.wav", bytes);
  EXPECT_EQ(check(), 1);
}

TEST_F(SoundCheck, DoesNotSeeAChangedByteThatMovesNone) {
  std::string bytes = take("vorn12.wav");
  const std::size_t letter = bytes.find_first_of("abcdefgh", 100);
  ASSERT_NE(letter, std::string::npos);
  bytes[letter] = 'z';
  folder.write("vorn12.wav", bytes);
  EXPECT_EQ(check(), 0);
}

TEST_F(SoundCheck, KeepsAnEarlierVerdict) {
  HeadlessOptions options;
  options.folder = folder.path();
  HeadlessPlatform platform(options, {});
  GameState g(platform);
  g.waveFilesBad = 1;
  checkwaves(g);
  EXPECT_EQ(g.waveFilesBad, 1);  // whoever checks sets it to 0 first
}

TEST_F(SoundCheck, LeavesTheTapesAsLongAsTheirLargestPositions) {
  HeadlessOptions options;
  options.folder = folder.path();
  GameRig rig(Wheel::kKeys, options);
  for (int engine = 1; engine <= 6; ++engine) {
    rig.g.engineSound = engine;
    scars(rig.g);
    rig.g.soundRpm = 107.999;  // the most that revving reaches
    for (int i = 0; i < 2000; ++i) EXPECT_NO_THROW(aprpms(rig.g)) << engine;
  }
  EXPECT_NO_THROW(rig.g.sound8Buffer->SetCurrentPosition(114848));
  for (const int wall : {1, 2, 3}) {
    rig.g.wallSound = wall;
    EXPECT_NO_THROW(setwaves(rig.g)) << wall;
  }
}

}  // namespace
}  // namespace vorn
