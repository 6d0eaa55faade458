// A lap of every track, heard through the game's own mixer: whether each cue
// stands out on its side, over everything else that sounds in the race.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "hearing/spectrogram.h"
#include "platform/limiter.h"
#include "sessions/sounds/mix_ear.h"
#include "sessions/tracks/one_race.h"
#include "sessions/tracks/wheel_driver.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

using synth::Signal;

constexpr double kMixRate = 48000;
constexpr std::int64_t kMostHeard = 2000;  // ms of a segment

double decibels(double power) {
  return 10 * std::log10(power + 1e-20);
}

/// Decibels by which `sound` at its stronger moments stands above the usual
/// strength of `rest`, in the third octave in which it does so most.
double prominence(const Signal& sound, const Signal& rest) {
  const std::vector<double> thirds = hearing::thirdOctaves(250, 6300);
  const auto levelsOf = [&](const Signal& signal, double share) {
    const auto spectrogram = hearing::spectrogramOf(signal, kMixRate, 0.05, 0.025);
    std::vector<std::vector<double>> bands(thirds.size() - 1);
    for (const auto& frame : spectrogram.frames) {
      const auto powers = hearing::bandPowers(frame, spectrogram.binHertz, thirds);
      for (std::size_t band = 0; band < bands.size(); ++band) bands[band].push_back(powers[band]);
    }
    std::vector<double> levels;
    for (const auto& powers : bands) levels.push_back(decibels(hearing::percentile(powers, share)));
    return levels;
  };
  const auto up = levelsOf(sound, 0.9), down = levelsOf(rest, 0.5);
  double most = -200;
  for (std::size_t band = 0; band < up.size(); ++band) most = std::max(most, up[band] - down[band]);
  return most;
}

class TestDrive : public testing::TestWithParam<int> {
 protected:
  const Track& track() const { return *allTracks()[static_cast<std::size_t>(GetParam() - 1)]; }
};

INSTANTIATE_TEST_SUITE_P(OneLap, TestDrive, testing::Range(1, 11), [](const auto& tested) {
  return std::string(allTracks()[tested.index]->name).substr(0, 4) + std::to_string(tested.param);
});

/// What is heard of a cue over the second half of its segment, when it has to tell
/// the driver what comes.
struct CueHeard {
  double nearShare;   ///< of the ear on its side, 1: as loud as the game has asked for
  double farShare;    ///< of the other ear
  double prominence;  ///< dB, in the near ear
};

CueHeard listenTo(const BufferCourse& course, const Recording& recording, const MixEar& mix, Ear nearEar) {
  const std::int64_t middle = (course.from + course.to) / 2;
  const std::int64_t end = std::min(course.to, middle + kMostHeard);
  const Signal alone = playedAlone(course, recording, middle, end);
  const Signal nearMix = mix.heard(nearEar, middle, end);
  const Signal farMix = mix.heard(nearEar == Ear::kLeft ? Ear::kRight : Ear::kLeft, middle, end);
  Signal rest = nearMix;
  for (std::size_t i = 0; i < rest.size(); ++i) rest[i] -= alone[i];
  return {shareIn(nearMix, alone), shareIn(farMix, alone), prominence(alone, rest)};
}

/// What is left of the cue in its ear in the last moments of its segment.
double shareAtItsEnd(const BufferCourse& course, const Recording& recording, const MixEar& mix, Ear ear) {
  constexpr std::int64_t kLastMoments = 300;  // ms
  const std::int64_t from = course.to - kLastMoments;
  return shareIn(mix.heard(ear, from, course.to), playedAlone(course, recording, from, course.to));
}

TEST_P(TestDrive, EveryCueStandsOutOnItsSide) {
  MixEar mix;
  WheelDriver driver(track());
  const OneRace race(
      GetParam(), Device::kWheel, [&](const TickReport& tick) { return driver.after(tick); }, &mix);
  ASSERT_TRUE(race.isFinished()) << race.diagnostics();
  const std::int64_t start = race.trace().ticks().front().at("ms");
  const std::int64_t end = race.trace().ticks().back().at("ms");

  const auto courses = coursesOf(race.trace(), "warnBuffer", end);
  ASSERT_EQ(courses.size(), track().segments.size());
  for (std::size_t i = 0; i < courses.size(); ++i) {
    const Segment& segment = track().segments[i];
    SCOPED_TRACE("segment " + std::to_string(i + 1) + ", " + courses[i].file);
    const Recording recording = readWav(courses[i].file, race.fileBytes(courses[i].file));
    const BufferCourse& course = courses[i];
    const Ear side = segment.pan <= 0 ? Ear::kLeft : Ear::kRight;
    const CueHeard cue = listenTo(course, recording, mix, side);
    EXPECT_NEAR(cue.nearShare, 1, 0.15);
    // A cue straight ahead only leans to a side.
    const double farAtMost = segment.pan == 0 ? 0.8 : 0.4;
    EXPECT_LT(std::abs(cue.farShare), farAtMost * cue.nearShare);
    EXPECT_GE(cue.prominence, 6);
    // At its end it is at its loudest, and the mark of the segment may come on top:
    // the limiter holds the sum then, but must not take the cue away.
    const double lastShare = shareAtItsEnd(course, recording, mix, side);
    EXPECT_NEAR(lastShare, 1, 0.3);
  }
  EXPECT_LE(mix.peak(start, end), Limiter::kCeiling);
}

}  // namespace
}  // namespace vorn
