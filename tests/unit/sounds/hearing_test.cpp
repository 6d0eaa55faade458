// The measures that the sounds are judged by, on signals whose answers are known.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "hearing/din.h"
#include "hearing/figures.h"
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

Signal noise(int frames) {
  synth::Noise chance(4);
  return synth::white(chance, frames);
}

TEST(Figures, FindATremblingAndHowDeepItIs) {
  const auto trembling = [](double hertz, double depth) {
    return figuresOf(
               synth::shaped(tone(2000), kRate,
                             [=](double now) { return 1 + depth * std::sin(synth::kTwoPi * hertz * now); }),
               kRate)
        .roughness;
  };
  EXPECT_LT(figuresOf(tone(2000), kRate).roughness, 0.01);
  EXPECT_NEAR(trembling(70, 0.5), 0.5 / std::sqrt(2), 0.02);
  EXPECT_NEAR(trembling(70, 0.2), 0.2 / std::sqrt(2), 0.02);
  EXPECT_LT(trembling(8, 0.5), 0.02);  // that is a wavering
  EXPECT_NEAR(figuresOf(noise(3 * static_cast<int>(kRate)), kRate).roughness, 0.31, 0.02);
}

TEST(Figures, FindTheStrongestLine) {
  Signal two = tone(400);
  synth::mixInto(two, tone(900), 0.5);
  EXPECT_NEAR(figuresOf(two, kRate).strongestLine, 0.8, 0.01);
  EXPECT_LT(figuresOf(noise(static_cast<int>(kRate)), kRate).strongestLine, 0.01);
}

TEST(Figures, FindHowMuchALevelMoves) {
  EXPECT_LT(figuresOf(tone(1000), kRate).envelopeVariation, 0.01);
  EXPECT_NEAR(figuresOf(noise(3 * static_cast<int>(kRate)), kRate).envelopeVariation, 0.2, 0.03);
  const Signal pulsing = synth::shaped(
      tone(1000), kRate, [](double now) { return 1 + 0.5 * std::sin(synth::kTwoPi * 4 * now); });
  EXPECT_NEAR(figuresOf(pulsing, kRate).envelopeVariation, 0.5 / std::sqrt(2), 0.03);
}

TEST(Figures, FindWhatTellsASide) {
  Signal both = tone(500);
  synth::mixInto(both, tone(3000), 0.5);
  EXPECT_NEAR(figuresOf(both, kRate).sideEnergy, 0.2, 0.01);
}

TEST(Figures, CallWhatIsHighSharp) {
  const auto sharpness = [](double hertz) {
    return figuresOf(synth::bandpass(noise(static_cast<int>(kRate)), kRate, hertz, 8), kRate).sharpness;
  };
  EXPECT_NEAR(sharpness(1000), 1.2, 0.2);
  EXPECT_GT(sharpness(4000), 1.4 * sharpness(1000));
}

TEST(Figures, LeaveSilenceOut) {
  Signal sound = tone(1000);
  sound.resize(3 * sound.size());
  EXPECT_NEAR(static_cast<double>(withoutSilence(sound, kRate).size()), kRate, 0.04 * kRate);
}

TEST(Figures, SayHowFarASoundStandsAboveTheRest) {
  const Levels rest = usualLevels(noise(static_cast<int>(kRate)), kRate);
  const double clear = clearance(strongLevels(tone(1000), kRate), rest);
  EXPECT_NEAR(clearance(strongLevels(tone(1000, 2), kRate), rest), clear + 6, 0.1);
  EXPECT_LT(clearance(strongLevels(tone(1000), kRate), rest, 1), clear - 10);  // a tone is in one band
}

}  // namespace
}  // namespace vorn::hearing
