// The measures that the sounds are judged by, on signals whose answers are known.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "hearing/fingerprint.h"
#include "hearing/spectrogram.h"
#include "synth/noise.h"
#include "synth/tones.h"

namespace vorn::hearing {
namespace {

constexpr double kRate = 22050;

Signal tone(double hertz, double amplitude = 1) {
  return synth::sine(kRate, 1, hertz, amplitude);
}

double sumOf(const std::vector<double>& values) {
  double sum = 0;
  for (const double value : values) sum += value;
  return sum;
}

TEST(Hearing, GivesATonesPowerToItsThirdOctave) {
  const auto spectrogram = spectrogramOf(tone(1000, 0.5), kRate, 0.05, 0.025);
  EXPECT_EQ(spectrogram.frames.size(), 40U);
  const std::vector<double> edges = thirdOctaves(250, 6300);
  const std::vector<double> powers = bandPowers(spectrogram.frames[10], spectrogram.binHertz, edges);
  const auto strongest = std::max_element(powers.begin(), powers.end()) - powers.begin();
  EXPECT_NEAR(edges[static_cast<std::size_t>(strongest)], 891, 2);
  EXPECT_NEAR(powers[static_cast<std::size_t>(strongest)], 0.125, 0.002);
  EXPECT_NEAR(sumOf(powers), 0.125, 0.002);
}

TEST(Hearing, TakesASignalAsALoop) {
  // A whole number of periods: the stretch over the end is like any other.
  const auto spectrogram = spectrogramOf(tone(1000), kRate, 0.05, 0.025);
  EXPECT_NEAR(sumOf(spectrogram.frames.back()), 0.5, 0.005);
}

TEST(Hearing, SharesPowerBetweenFrequencies) {
  Signal both = tone(500);
  synth::mixInto(both, tone(3000), 0.5);
  EXPECT_NEAR(shareBetween(spectrogramOf(both, kRate, 0.025, 0.01), 1200, 5000), 0.2, 0.01);
}

TEST(Hearing, FindsPercentiles) {
  const std::vector<double> values{5, 1, 4, 2, 3};
  EXPECT_EQ(percentile(values, 0), 1);
  EXPECT_EQ(percentile(values, 0.5), 3);
  EXPECT_EQ(percentile(values, 1), 5);
}

TEST(Hearing, FindsHowFastALoudnessMoves) {
  const Signal beating = synth::shaped(
      tone(2000), kRate, [](double now) { return 1 + 0.5 * std::sin(synth::kTwoPi * 10 * now); });
  const std::vector<double> powers = movement(beating, kRate, {0.75, 9, 11, 30});
  EXPECT_NEAR(powers[1], 0.125, 0.02);
  EXPECT_LT(powers[0] + powers[2], 0.01);
}

TEST(Hearing, KnowsALoopFromWhereverItStarts) {
  synth::Noise noise(1);
  Signal loop = synth::shaped(synth::white(noise, static_cast<int>(kRate)), kRate,
                              [](double now) { return std::pow(std::sin(synth::kTwoPi * 2 * now), 2); });
  Signal other = synth::shaped(tone(1500), kRate,
                               [](double now) { return std::pow(std::sin(synth::kTwoPi * 3 * now), 2); });
  Signal turned = loop;
  std::rotate(turned.begin(), turned.begin() + 7000, turned.end());
  const std::vector<Fingerprint> prints{fingerprintOf(loop, kRate), fingerprintOf(turned, kRate),
                                        fingerprintOf(other, kRate)};
  const Scaling scaling(prints);
  const double same = distance(scaling.scaled(prints[0]), scaling.scaled(prints[1]));
  EXPECT_LT(same, 0.25 * distance(scaling.scaled(prints[0]), scaling.scaled(prints[2])));
}

TEST(Hearing, ScalesEveryNumberAlike) {
  const Scaling scaling({{1, 100}, {3, 300}});
  EXPECT_NEAR(distance(scaling.scaled({1, 100}), {-1, -1}), 0, 1e-6);
  EXPECT_NEAR(distance(scaling.scaled({3, 300}), {1, 1}), 0, 1e-6);
}

}  // namespace
}  // namespace vorn::hearing
