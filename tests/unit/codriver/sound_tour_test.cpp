#include "codriver/sound_tour.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "sound/catalogue.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

TEST(SoundTour, HasEverySoundOfTheGame) {
  std::set<std::string> toured;
  for (const TourGroup& group : soundTour()) {
    for (const TourSound& sound : group.sounds) toured.insert(sound.file);
  }
  for (const CatalogueEntry& entry : soundCatalogue()) {
    EXPECT_TRUE(toured.erase(std::string(entry.name))) << entry.name;
  }
  EXPECT_TRUE(toured.empty()) << *toured.begin() << " is none";
}

TEST(SoundTour, HasTheCuesOfEachTrackInTheOrderOfItsSegments) {
  const auto groups = soundTour();
  constexpr std::size_t kBefore = 2;  // the car, walls and road
  for (std::size_t track = 0; track < allTracks().size(); ++track) {
    const TourGroup& group = groups[kBefore + track];
    EXPECT_THAT(group.name, HasSubstr(allTracks()[track]->name));
    std::vector<std::string> files, expected;
    for (const TourSound& sound : group.sounds) files.push_back(sound.file);
    for (const Segment& segment : allTracks()[track]->segments) expected.push_back(cueFile(segment.cue));
    EXPECT_EQ(files, expected) << group.name;
  }
}

TEST(SoundTour, NamesEachCueWithItsSideAndItsPlace) {
  const TourGroup mapleCues = soundTour()[2];
  EXPECT_EQ(mapleCues.sounds[0].text, " 1, straight, gas can, left. ");
  EXPECT_EQ(mapleCues.sounds[1].text, " 2, left turn, bicycle bell, left. ");
  EXPECT_EQ(soundTour()[10].sounds[3].text, " 4, straight, swimmers, in the middle. ");
}

TEST(SoundTour, EveryTextIsASentenceOfTheGamesManner) {
  for (const TourGroup& group : soundTour()) {
    EXPECT_THAT(group.name, StartsWith(" "));
    for (const TourSound& sound : group.sounds) {
      EXPECT_THAT(sound.text, StartsWith(" "));
      EXPECT_THAT(sound.text, EndsWith(". "));
    }
  }
}

}  // namespace
}  // namespace vorn
