#include "codriver/preview_words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tracks/catalogue.h"

namespace vorn {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Ge;
using testing::Le;
using testing::SizeIs;

constexpr double kGently = 60, kFlatOut = 228;

std::vector<std::string> wordsOf(const Track& track, double topSpeed) {
  const auto paces = paceOf(track, topSpeed);
  std::vector<std::string> words;
  for (std::size_t i = 0; i < paces.size(); ++i) words.push_back(segmentWords(track.segments[i], paces[i]));
  return words;
}

TEST(Paces, AreASegmentEachAndNeverAboveTheTopSpeed) {
  for (const Track* track : allTracks()) {
    const auto paces = paceOf(*track, kGently);
    ASSERT_THAT(paces, SizeIs(track->segments.size()));
    for (std::size_t i = 0; i < paces.size(); ++i) {
      EXPECT_LE(paces[i].slowest, kGently) << track->name;
      EXPECT_GT((paces[i].seconds * 9.8 + 1) * kGently, track->segments[i].length) << track->name << i;
      EXPECT_EQ(paces[i].gear, 1) << track->name;
    }
  }
}

TEST(Paces, FlatOutAreThoseOfTheBuiltInDriver) {
  double seconds = 0;
  for (const SegmentPace& pace : paceOf(kMaple, kFlatOut)) seconds += pace.seconds;
  EXPECT_THAT(seconds, AllOf(Ge(44), Le(49))) << "49.2 from a standstill";
}

TEST(Paces, HaveTheGearOfTheSlowestPlace) {
  const auto paces = paceOf(kMentor, kFlatOut);
  EXPECT_EQ(paces[1].gear, 3) << paces[1].slowest;
  EXPECT_EQ(paceOf(kChesterland, kFlatOut)[1].gear, 1);
}

TEST(SegmentWords, TellAStraightByItsLengthAndItsSeconds) {
  const Segment straight{20000, 1, 30, 0};
  EXPECT_EQ(segmentWords(straight, {.seconds = 13.4, .slowest = 60, .gear = 1}),
            " long straight, 13 seconds. ");
  const Segment middling{19999, 1, 30, 0};
  EXPECT_EQ(segmentWords(middling, {.seconds = 2.5, .slowest = 60, .gear = 1}), " straight, 2 seconds. ");
  const Segment little{8000, 1, 30, 0};
  EXPECT_EQ(segmentWords(little, {.seconds = 0.2, .slowest = 60, .gear = 1}), " short straight, 1 second. ");
}

TEST(SegmentWords, TellATurnByItsSideItsSharpnessAndItsGear) {
  const auto turn = [](Turn side, double fixed, double length = 6000) {
    return segmentWords({length, 1, 30, 0, {side, fixed, 1e9}}, {.seconds = 3, .slowest = 90, .gear = 2});
  };
  EXPECT_EQ(turn(Turn::kLeft, 1.4), " left, easy, second gear. ");
  EXPECT_EQ(turn(Turn::kRight, 1.5), " right, medium, second gear. ");
  EXPECT_EQ(turn(Turn::kRight, 2.8), " right, sharp, second gear. ");
  EXPECT_EQ(turn(Turn::kLeft, 4.5), " left, tight, second gear. ");
  EXPECT_EQ(turn(Turn::kLeft, 7), " left, very tight, second gear. ");
  EXPECT_EQ(turn(Turn::kLeft, 2, 12000), " long left, medium, second gear. ");
  EXPECT_EQ(turn(Turn::kLeft, 2, 3500), " short left, medium, second gear. ");
}

TEST(SegmentWords, OfATrackCanBeReadAsItsDescription) {
  EXPECT_THAT(wordsOf(kPainsville, kGently),
              ElementsAre(" long straight, 56 seconds. ", " left, medium, first gear. ",
                          " left, tight, first gear. ", " long straight, 53 seconds. ",
                          " left, tight, first gear. ", " left, medium, first gear. "));
}

TEST(SegmentWords, KnowTheThirdTurnOfChesterlandForALeftOneAndTheSwimmingHole) {
  const auto words = wordsOf(kChesterland, kFlatOut);
  EXPECT_THAT(words[2], testing::StartsWith(" left, very tight, "));
  EXPECT_THAT(words[3], testing::HasSubstr("to the ramp: in the middle of the road"));
}

TEST(SegmentWords, BankedTurnsAreTurnsToo) {
  EXPECT_THAT(wordsOf(kGeneva, kFlatOut)[1], testing::StartsWith(" left, medium, "));
}

}  // namespace
}  // namespace vorn
