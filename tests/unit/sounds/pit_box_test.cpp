// The pit box voice is a map of the lane: its words must come when the driver
// has to hear them.

#include <gtest/gtest.h>

#include <cmath>

#include "recipes/pit_box.h"
#include "spectrum.h"
#include "support_sounds.h"
#include "synth/loudness.h"

namespace vorn::sounds {
namespace {

/// Seconds at which sound sets in after at least a tenth of silence.
std::vector<double> onsets(const test::Heard& heard) {
  const test::Signal sound = heard.signal();
  const auto frames = static_cast<std::size_t>(heard.rate / 200);  // 5 ms
  std::vector<double> moments;
  int quiet = 0;
  for (std::size_t at = 0; at + frames <= sound.size(); at += frames) {
    const double level = test::decibels(test::meanSquare(test::stretch(sound, at, frames)));
    if (level < -45) {
      ++quiet;
    } else {
      if (quiet >= 20) moments.push_back(static_cast<double>(at) / heard.rate);
      quiet = 0;
    }
  }
  return moments;
}

TEST(PitBox, SaysItsWordsOnTime) {
  const std::vector<double> moments = onsets(test::hearSound("vorn1t73"));
  ASSERT_GE(moments.size(), 1 + kPitBoxNumbers.size());
  EXPECT_NEAR(moments[0], kPitBoxCall, 0.02);
  for (std::size_t i = 0; i < kPitBoxNumbers.size(); ++i) {
    EXPECT_NEAR(moments[i + 1], kPitBoxNumbers[i].seconds, 0.02) << kPitBoxNumbers[i].word;
  }
}

/// Where a car stops that drives at `mph` until its driver, `reaction` seconds
/// after the onset of `word`, brakes with `braking` mph a tick.
double stop(double mph, double word, double reaction, double braking) {
  constexpr double kTick = 0.1;
  double place = 0, heard = 0, brakeAt = -1, now = 0;
  while (mph > 1) {
    const double rate = std::min(48000.0, 8000 + 281 * mph);
    if (heard >= word && brakeAt < 0) brakeAt = now + reaction;
    if (brakeAt >= 0 && now >= brakeAt) mph = std::max(0.0, mph - braking);
    place += mph;
    heard += kTick * rate / 22050;
    now += kTick;
  }
  return place;
}

TEST(PitBox, BringsTheCarIntoTheBoxOnTwo) {
  const PitBoxNumber& two = kPitBoxNumbers[3];
  ASSERT_STREQ(two.word, "two");
  for (const double mph : {45.0, 50.0, 55.0, 60.0}) {
    for (const double reaction : {0.2, 0.5, 0.8}) {
      for (const double braking : {5.0, 4.6}) {  // first and second gear
        const double place = stop(mph, two.seconds, reaction, braking);
        EXPECT_GE(place, 2500) << mph << " mph, " << reaction << " s";
        EXPECT_LE(place, 3500) << mph << " mph, " << reaction << " s";
      }
    }
  }
}

/// The loudness of `name` between 200 and 4000 Hz when it is played at `rate`.
double heardAt(std::string_view name, double rate) {
  const test::Signal sound = test::hearSound(name).signal();
  const test::Signal band =
      synth::steepLowpass(synth::steepHighpass(sound, rate, 200), rate, std::min(4000.0, 0.45 * rate));
  return synth::loudestMoment({band}, static_cast<int>(rate));
}

TEST(ChangingRates, LeaveTheSoundsAudible) {
  for (const double rate : {8000.0, 22050.0}) {
    EXPECT_GE(heardAt("vorn29", rate), -26) << rate;
    EXPECT_GE(heardAt("vorn18", rate), -26) << rate;
  }
  for (const double rate : {8281.0, 26265.0}) EXPECT_GE(heardAt("vorn1t73", rate), -26) << rate;
}

}  // namespace
}  // namespace vorn::sounds
