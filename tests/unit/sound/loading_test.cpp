#include "sound/loading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/game_rig.h"
#include "support/wav_maker.h"

namespace vorn {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

using Lines = std::vector<std::string>;

// What loading one more time says of a slot that holds something.
Lines reloaded(const std::string& slot, const std::string& file, const Lines& settings) {
  Lines lines = {slot + " release", slot + " create " + file};
  for (const std::string& setting : settings) lines.push_back(slot + " " + setting);
  return lines;
}

// Loaded in place, at a frequency and a volume, with a pan.
Lines prepared(const std::string& slot, const std::string& file, int position, int volume, int hertz,
               int pan) {
  return reloaded(slot, file,
                  {"SetCurrentPosition " + std::to_string(position), "SetVolume " + std::to_string(volume),
                   "SetFrequency " + std::to_string(hertz), "SetPan " + std::to_string(pan)});
}

Lines joined(const std::vector<Lines>& parts) {
  Lines all;
  for (const Lines& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

// The right wall sound starts in the middle of its recording.
constexpr int kHalfway = 44159;

Lines everythingLoadedAt(int volume, const std::string& engine, const std::string& wall) {
  return joined({
      prepared("engineBuffer", engine, 0, volume, 22051, 0),
      prepared("sound19Buffer", "vorn19.wav", 0, volume, 22050, 0),
      prepared("wallLeftBuffer", wall, 0, volume - 1000, 22050, -5000),
      prepared("wallRightBuffer", wall, kHalfway, volume - 1000, 22050, 5000),
      prepared("sound4Buffer", "vorn4.wav", 0, volume, 22050, 0),
      prepared("markBuffer", "vorn17.wav", 0, volume, 22050, 0),
      prepared("sound29Buffer", "vorn29.wav", 0, volume, 22050, 0),
      prepared("sound18Buffer", "vorn18.wav", 0, volume, 22050, 0),
      prepared("sound9Buffer", "vorn9.wav", 0, volume, 22050, 0),
      prepared("hornBuffer", "vorn7.wav", 0, volume, 22051, 0),
      prepared("sound10Buffer", "vorn10.wav", 0, volume, 22051, 0),
      prepared("sound8Buffer", "vorn8.wav", 0, volume, 22051, 0),
  });
}

TEST(Setwaves, LoadsTheSoundsOfARaceInOrder) {
  GameRig rig;
  EXPECT_EQ(rig.told(setwaves), everythingLoadedAt(0, "vorn1.wav", "vorn16.wav"));
}

TEST(Setwaves, TakesTheVolumeThePlayerHasChosen) {
  GameRig rig;
  rig.g.soundVolume = -3500;
  EXPECT_EQ(rig.told(setwaves), everythingLoadedAt(-3500, "vorn1.wav", "vorn16.wav"));
}

TEST(Setwaves, TakesTheEngineAndTheWallSoundThePlayerHasChosen) {
  GameRig rig;
  rig.g.engineSound = 6;
  rig.g.wallSound = 2;
  EXPECT_EQ(rig.told(setwaves), everythingLoadedAt(0, "vorn34.wav", "vorn24.wav"));
  rig.g.wallSound = 3;
  EXPECT_EQ(rig.told(setwaves), everythingLoadedAt(0, "vorn34.wav", "vorn23.wav"));
}

TEST(Setwaves, PlaysNothing) {
  GameRig rig;
  EXPECT_THAT(rig.told(setwaves), Each(Not(HasSubstr(" Play "))));
  EXPECT_THAT(rig.sounding(), ElementsAre());
}

TEST(Setwaves, LeavesTheFrequencyOfTheLastSound) {
  GameRig rig;
  EXPECT_EQ(rig.g.baseFrequency, 22051);
}

TEST(Setwaves, FailsWithAWallSoundThatIsNone) {
  GameRig rig;
  rig.g.wallSound = 4;  // the gear change, far too short to be started halfway
  EXPECT_THROW(setwaves(rig.g), PlatformError);
}

TEST(Setwaves, FailsWhereAFileIsMissing) {
  const TemporaryFolder empty;
  GameRig rig;
  HeadlessOptions options;
  options.folder = empty.path();
  EXPECT_THROW(GameRig(Wheel::kKeys, options), PlatformError);
}

TEST(Scars, LoadsEachEngineWithoutPlayingIt) {
  GameRig rig;
  const char* const files[] = {"vorn1.wav",  "vorn30.wav", "vorn31.wav",
                               "vorn32.wav", "vorn33.wav", "vorn34.wav"};
  for (int engine = 1; engine <= 6; ++engine) {
    rig.g.engineSound = engine;
    EXPECT_EQ(rig.told(scars), prepared("engineBuffer", files[engine - 1], 0, 0, 22051, 0));
  }
}

TEST(Scars, FailsWithAnEngineThatIsNone) {
  for (const int engine : {-1, 0, 7, 9}) {
    GameRig rig;
    rig.g.engineSound = engine;
    EXPECT_THROW(scars(rig.g), PlatformError) << engine;
  }
}

TEST(LoadSlot, AddsAHertzToTheFrequencyOfTheFile) {
  const TemporaryFolder folder;
  folder.write("vorn3.wav", makeWav(100, {.rate = 11025}));
  GameRig rig;
  HeadlessOptions options;
  options.folder = folder.path();
  HeadlessPlatform platform(options, {});
  GameState g(platform);
  g.directSound = platform.createSoundDevice();
  loadSlot(g, g.oneShotBuffer, "vorn3");
  EXPECT_EQ(g.baseFrequency, 11026);
  EXPECT_EQ(g.oneShotBuffer->GetFrequency(), 11026);
}

TEST(FillSlot, FailsWithoutASoundDevice) {
  GameRig rig;
  rig.g.directSound.reset();
  EXPECT_THROW(fillSlot(rig.g, rig.g.oneShotBuffer, "vorn3"), PlatformError);
}

TEST(FillSlot, ReleasesWhatTheSlotHeldEvenIfItSounds) {
  GameRig rig;
  loadSlot(rig.g, rig.g.oneShotBuffer, "vorn2");
  rig.g.oneShotBuffer->Play(SoundBuffer::kLooping);
  EXPECT_THAT(rig.told([](GameState& g) { fillSlot(g, g.oneShotBuffer, "vorn3"); }),
              ElementsAre("oneShotBuffer release", "oneShotBuffer create vorn3.wav"));
  EXPECT_THAT(rig.sounding(), ElementsAre());
}

}  // namespace
}  // namespace vorn
