// A lap of every track, heard through the game's own mixer.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fitter.h"
#include "support/session.h"
#include "testdrive/test_drive.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

using testing::HasSubstr;

// The limiter is for where a cue at its loudest meets the joint that ends its segment, or a wall.
// Measured: 0.7 to 1.5 % of a lap.
constexpr double kSeldom = 0.02;

class TestDrives : public testing::TestWithParam<std::tuple<int, int>> {};

std::string nameOf(const testing::TestParamInfo<std::tuple<int, int>>& tested) {
  const auto [track, engine] = tested.param;
  const std::string name = allTracks()[static_cast<std::size_t>(track - 1)]->name;
  return name.substr(0, 4) + std::to_string(track) + "Engine" + std::to_string(engine);
}

INSTANTIATE_TEST_SUITE_P(OneLap, TestDrives, testing::Combine(testing::Range(1, 11), testing::Range(1, 7)),
                         nameOf);

TEST_P(TestDrives, HearEveryCueStandOutOnItsSide) {
  const auto& [track, engine] = GetParam();
  const TestDrive drive = driveLap({track, engine}, VORN_SOUND_FOLDER, nullptr);
  EXPECT_EQ(drive.cues.size(), drive.track->segments.size());
  EXPECT_THAT(faultsOf(drive), testing::IsEmpty());
  EXPECT_GE(drive.walls.size(), 7U);
  EXPECT_GT(drive.walls.back().difference - drive.walls.front().difference, 15);
  EXPECT_GT(drive.seconds, 20);
  EXPECT_GT(drive.peak, 0.3);
  EXPECT_LT(drive.limited, kSeldom);
}

/// A set in which one sound plays `samples` instead.
class SetWith : public TemporaryFolder {
 public:
  SetWith(const std::string& name, const std::vector<std::int16_t>& samples) {
    linkSounds(*this);
    write(name + ".wav", sounds::fitIntoFile(sounds::layoutOf(name), samples));
  }
};

std::vector<std::int16_t> hiss(const std::string& name, int amplitude) {
  std::vector<std::int16_t> samples;
  std::uint32_t state = 1;
  for (int i = 0; i < sounds::layoutOf(name).frames(); ++i) {
    state = state * 1664525 + 1013904223;
    samples.push_back(static_cast<std::int16_t>(static_cast<int>(state >> 16) % (2 * amplitude) - amplitude));
  }
  return samples;
}

TEST(TestDrive, MissesACueThatIsTooQuiet) {
  const SetWith set("vorn1t3", hiss("vorn1t3", 20));
  EXPECT_THAT(
      faultsOf(driveLap({1}, set.path(), nullptr)),
      testing::Contains(AllOf(HasSubstr("segment 3, vorn1t3.wav: only"), HasSubstr("above the rest"))));
}

TEST(TestDrive, HearsAWallThatDrownsTheCues) {
  const SetWith set("vorn16", hiss("vorn16", 32000));
  EXPECT_GT(faultsOf(driveLap({1}, set.path(), nullptr)).size(), kMaple.segments.size() / 2);
}

TEST(TestDrive, NeedsItsSounds) {
  const TemporaryFolder empty;
  EXPECT_THROW(driveLap({1}, empty.path(), nullptr), std::runtime_error);
}

}  // namespace
}  // namespace vorn
