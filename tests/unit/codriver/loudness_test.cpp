#include "codriver/loudness.h"

#include <gtest/gtest.h>

#include "codriver/settings_menu.h"

namespace vorn {
namespace {

TEST(Loudness, ChangesNothingAsItComes) {
  const AidSettings settings;
  for (const SoundKind kind :
       {SoundKind::kEngine, SoundKind::kCue, SoundKind::kWall, SoundKind::kCar, SoundKind::kCodriver}) {
    for (const int volume : {-10000, -6500, -1, 0}) EXPECT_EQ(heardVolume(settings, kind, volume), volume);
  }
  for (const int pan : {-10000, -1, 0, 3000, 10000}) {
    EXPECT_EQ(heardPan(settings, pan), pan);
    EXPECT_EQ(heardFrequency(settings, 22051, pan), 22051);
  }
}

TEST(Loudness, LowersOneKindOfSound) {
  AidSettings settings;
  settings.wallLevel = -900;
  EXPECT_EQ(heardVolume(settings, kindOfSlot("wallLeftBuffer"), -100), -1000);
  EXPECT_EQ(heardVolume(settings, kindOfSlot("sound10Buffer"), -9500), -10000);
  EXPECT_EQ(heardVolume(settings, kindOfSlot("engineBuffer"), -100), -100);
  EXPECT_EQ(heardVolume(settings, kindOfSlot("warnBuffer"), -100), -100);
  EXPECT_EQ(heardVolume(settings, kindOfSlot("oneShotBuffer"), -100), -100);
  EXPECT_EQ(heardVolume(settings, kindOfSlot("codriver turn"), -100), -100);
}

TEST(Ears, AreNarrowedSwappedAndBalanced) {
  AidSettings settings;
  settings.width = 50;
  EXPECT_EQ(heardPan(settings, -3000), -1500);
  settings.swapsEars = 1;
  EXPECT_EQ(heardPan(settings, -3000), 1500);
  settings.balance = -600;
  EXPECT_EQ(heardPan(settings, -3000), 900);
  settings.width = 100;
  EXPECT_EQ(heardPan(settings, 10000), -10000);
}

TEST(OneEar, HearsSidesAsPitch) {
  AidSettings settings;
  settings.hearsInOne = 1;
  EXPECT_EQ(heardPan(settings, -3000), 0);
  EXPECT_EQ(heardPan(settings, 10000), 0);
  EXPECT_LT(heardFrequency(settings, 22050, -3000), 22050);
  EXPECT_GT(heardFrequency(settings, 22050, 3000), 22050);
  EXPECT_EQ(heardFrequency(settings, 22050, 0), 22050);
  EXPECT_EQ(heardFrequency(settings, 100, -3000), 100);
  EXPECT_EQ(heardFrequency(settings, 100000, 3000), 100000);
  settings.swapsEars = 1;
  EXPECT_GT(heardFrequency(settings, 22050, -3000), 22050);
}

TEST(SettingRows, OfferOnlyWhatAFileMayHold) {
  AidSettings settings;
  auto rows = loudnessRows(settings);
  for (const SettingRow& row : aidRows(settings)) rows.push_back(row);
  for (SettingRow& row : rows) {
    for (const Choice& choice : row.choices) {
      row.field = choice.value;
      EXPECT_TRUE(aidsInFile(aidFileText(settings))) << row.name << ' ' << choice.value;
      EXPECT_EQ(row.choices[currentChoice(row)].value, choice.value);
    }
  }
}

TEST(SettingRows, StandAtTheNearestChoice) {
  AidSettings settings;
  settings.engineLevel = -700;
  const auto rows = loudnessRows(settings);
  EXPECT_EQ(rows.front().choices[currentChoice(rows.front())].value, -600);
}

}  // namespace
}  // namespace vorn
