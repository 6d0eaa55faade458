#include "platform/mixing/mixer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ebur128.h>

#include <chrono>
#include <cstdlib>
#include <new>
#include <thread>

#include "platform/errors.h"
#include "unit/platform/mixing/signals.h"

namespace {

/// Counts what a thread allocates while it asks for that.
thread_local bool countingAllocations = false;
thread_local int allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
  allocations += countingAllocations;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) {
    return memory;
  }
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  allocations += countingAllocations;
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  allocations += countingAllocations;
  std::free(memory);
}

namespace vorn {
namespace {

using namespace vorn::test;

struct Stereo {
  Signal left, right;
};

class MixerTest : public testing::Test {
 protected:
  Stereo render(int frames) {
    std::vector<float> interleaved(2 * static_cast<std::size_t>(frames));
    mixer.render(interleaved.data(), frames);
    Stereo out;
    for (std::size_t i = 0; i < interleaved.size(); i += 2) {
      out.left.push_back(interleaved[i]);
      out.right.push_back(interleaved[i + 1]);
    }
    return out;
  }
  /// Renders `frames` and takes the mixer's own delay off the front.
  Stereo renderLate(int frames) {
    render(Mixer::kDelay);
    return render(frames);
  }
  void speak(const std::vector<std::int16_t>& samples, int rate = 22050) {
    ASSERT_EQ(mixer.voice().write(mixer.voice().ticket(), rate, samples), samples.size());
  }

  Mixer mixer;
};

std::vector<std::int16_t> speechOf(std::size_t samples, std::int16_t value = 8000) {
  std::vector<std::int16_t> out(samples);
  for (std::size_t i = 0; i < samples; ++i) {
    out[i] = static_cast<std::int16_t>(value * std::sin(static_cast<double>(i) * 2 * std::numbers::pi / 50));
  }
  return out;
}

/// A tape of a rising engine: harmonics that slide up an octave, and some noise.
Signal engineTape(std::size_t frames) {
  Signal out(frames);
  double turn = 0;
  const Signal hiss = noise(frames, 0.0003, 7);
  for (std::size_t i = 0; i < frames; ++i) {
    turn += 60 * std::pow(2, static_cast<double>(i) / static_cast<double>(frames)) / 22050;
    double sample = 0;
    for (int harmonic = 1; harmonic <= 12; ++harmonic) {
      sample += 0.25 / harmonic * std::sin(2 * std::numbers::pi * turn * harmonic + harmonic * harmonic);
    }
    out[i] = static_cast<float>(sample) + hiss[i];
  }
  return out;
}

// ---- Level, place and pitch

TEST_F(MixerTest, VolumeIsExactToAHundredthOfADecibel) {
  const auto recording = recordingOf(48000, sine(48000, 997, 0.8));
  auto buffer = mixer.createBuffer(recording);
  buffer->Play(1);
  for (const int volume : {0, -1, -57, -100, -600, -1000, -3500, -6500, -9999}) {
    buffer->SetVolume(volume);
    render(600);
    const double expected = decibels(0.8) + volume / 100.0;
    EXPECT_NEAR(decibels(fitSine(render(9600).left, 997).amplitude), expected, 0.05) << volume;
  }
  buffer->SetVolume(-10000);
  render(600);
  EXPECT_EQ(peak(render(4800).left), 0);
}

TEST_F(MixerTest, PanTakesOffTheFarSideAlone) {
  auto buffer = mixer.createBuffer(recordingOf(48000, sine(48000, 997, 0.5)));
  buffer->Play(1);
  for (const int pan : {0, 1, -1, 150, -150, 2000, -2000, 5000, -5000, 9999, -9999}) {
    buffer->SetPan(pan);
    render(600);
    const Stereo out = render(9600);
    const double near = decibels(0.5), far = near - std::abs(pan) / 100.0;
    EXPECT_NEAR(decibels(fitSine(out.left, 997).amplitude), pan > 0 ? far : near, 0.05) << pan;
    EXPECT_NEAR(decibels(fitSine(out.right, 997).amplitude), pan < 0 ? far : near, 0.05) << pan;
  }
  buffer->SetPan(10000);
  render(600);
  EXPECT_EQ(peak(render(4800).left), 0);
  buffer->SetPan(-10000);
  render(600);
  EXPECT_EQ(peak(render(4800).right), 0);
}

TEST_F(MixerTest, StereoKeepsItsSidesAndPanBalancesThem) {
  auto buffer = mixer.createBuffer(recordingOf(48000, sine(48000, 400, 0.5), sine(48000, 900, 0.25)));
  buffer->Play(1);
  buffer->SetPan(600);
  render(600);
  const Stereo out = render(9600);
  EXPECT_NEAR(decibels(fitSine(out.left, 400).amplitude), decibels(0.5) - 6, 0.05);
  EXPECT_NEAR(decibels(fitSine(out.right, 900).amplitude), decibels(0.25), 0.05);
  EXPECT_LT(fitSine(out.left, 900).amplitude, 1e-4);
  EXPECT_LT(fitSine(out.right, 400).amplitude, 1e-4);
}

TEST_F(MixerTest, FrequencyIsWithinATenthOfAPercent) {
  auto buffer = mixer.createBuffer(recordingOf(22050, sine(22050, 1000, 0.5)));
  buffer->Play(1);
  for (const int frequency : {100, 101, 8000, 22050, 22051, 48000, 51850, 100000}) {
    buffer->SetFrequency(frequency);
    EXPECT_EQ(buffer->GetFrequency(), frequency);
    render(600);
    // The turn between two fits a second apart tells the pitch far finer than needed.
    const double pitch = 1000.0 * frequency / 22050;
    const Signal out = render(96000).left;
    const double first = fitSine(part(out, 0, 48000), pitch).phase;
    const double second = fitSine(part(out, 48000, 48000), pitch).phase;
    const double expected = std::fmod(2 * std::numbers::pi * pitch, 2 * std::numbers::pi);
    const double drift = std::remainder(second - first - expected, 2 * std::numbers::pi);
    EXPECT_LT(std::abs(drift) / (2 * std::numbers::pi), 0.001 * pitch) << frequency;
    EXPECT_NEAR(fitSine(part(out, 0, 48000), pitch).amplitude, 0.5, 0.01) << frequency;
  }
}

TEST_F(MixerTest, AliasImageAndNoiseStayBelowSixtyDecibels) {
  for (const int tone : {50, 440, 1000, 2500, 4000, 5000, 7000}) {
    auto buffer = mixer.createBuffer(recordingOf(22050, sine(22050, tone, 0.8)));
    render(1000);
    buffer->Play(1);
    for (const double ratio : {0.4, 0.45, 0.62, 0.83, 1.0, 1.00005, 1.31, 1.77, 2.0, 2.15, 2.3}) {
      const int frequency = static_cast<int>(22050 * ratio);
      buffer->SetFrequency(frequency);
      render(1000);
      const SineFit fit = fitSine(render(12000).left, static_cast<double>(tone) * frequency / 22050);
      EXPECT_LT(decibels(fit.restRms / (fit.amplitude / std::numbers::sqrt2)), -60)
          << tone << " Hz at " << ratio;
      EXPECT_NEAR(decibels(fit.amplitude), decibels(0.8), 0.05) << tone << " Hz at " << ratio;
    }
  }
}

TEST_F(MixerTest, DistortionAndNoiseStayBelowEightyDecibels) {
  for (const int tone : {1000, 4000, 6000, 8000}) {
    auto buffer = mixer.createBuffer(recordingOf(22050, sine(22050, tone, 0.8)));
    render(1000);  // the last one's end
    buffer->Play(1);
    for (const int frequency : {22051, 22050, 23456, 26307, 30011}) {
      buffer->SetFrequency(frequency);
      render(1000);
      const SineFit fit = fitSine(render(12000).left, static_cast<double>(tone) * frequency / 22050);
      EXPECT_LT(decibels(fit.restRms / (fit.amplitude / std::numbers::sqrt2)), -80)
          << tone << " Hz at " << frequency;
    }
  }
}

TEST(InterpolatorTest, GivesTheSameSamplesOnEveryProcessor) {
  const Interpolator wider, plain(false);
  const Signal recording = noise(500, 0.5, 3);
  for (const bool looping : {false, true}) {
    for (const double ratio : {0.3, 0.999, 1.05, 1.2, 1.5, 2.05, 2.3}) {
      const auto step = static_cast<Phase>(ratio * 4294967296.0);
      std::array<Phase, 63> offsets;
      for (std::size_t i = 0; i < offsets.size(); ++i) offsets[i] = i * step;
      for (const std::int64_t frame : {0, 10, 250, 480}) {
        const SampleSource source{recording.data(), 500, looping, static_cast<Phase>(frame) << kPhaseBits};
        std::array<float, 63> one, other;
        wider.read(source, offsets.data(), step, one.data(), 63);
        plain.read(source, offsets.data(), step, other.data(), 63);
        EXPECT_EQ(one, other) << ratio << " from " << frame;
      }
    }
  }
}

TEST_F(MixerTest, PlayedTooFastTheUpperOctaveIsLeftOutInsteadOfFoldedBack) {
  // 20 kHz of a 48 kHz recording, played at 96 kHz, would be 40 kHz: it must not come back as 8 kHz.
  auto buffer = mixer.createBuffer(recordingOf(48000, sine(48000, 20000, 0.8)));
  buffer->Play(1);
  buffer->SetFrequency(96000);
  render(1000);
  EXPECT_LT(decibels(rms(render(9600).left) / (0.8 / std::numbers::sqrt2)), -60);
}

TEST_F(MixerTest, EveryStretchKeepsAllThatFitsBelowTheLimitAndNothingAbove) {
  // The fastest steps that each kernel is for: a shorter one would let aliases through, a longer one cut off
  // too low.
  for (const int frequency : {48000, 52800, 62400, 79200, 99800}) {
    const double ratio = frequency / 48000.0;
    const auto level = [&](double heardHertz) {
      auto buffer = mixer.createBuffer(recordingOf(48000, sine(48000, std::round(heardHertz / ratio), 0.8)));
      buffer->SetFrequency(frequency);
      buffer->Play(1);
      render(1000);
      const double heard = rms(render(9600).left);
      buffer.reset();
      render(1000);
      return decibels(heard / (0.8 / std::numbers::sqrt2));
    };
    EXPECT_GT(level(0.75 * 24000), -0.2) << ratio;
    if (ratio >= 1.3) {
      EXPECT_LT(level(1.15 * 24000), -60) << ratio;
    }
  }
}

// ---- Playing, stopping, positions

TEST_F(MixerTest, StatusIsRightBeforeAnythingIsRendered) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(480, 0.5F)));
  EXPECT_EQ(buffer->GetStatus(), 0);
  buffer->Play(0);
  EXPECT_EQ(buffer->GetStatus(), 1);
  buffer->Stop();
  EXPECT_EQ(buffer->GetStatus(), 0);
  buffer->Play(1);
  EXPECT_EQ(buffer->GetStatus(), 1);
}

TEST_F(MixerTest, PlayedOnceItEndsAfterItsFramesAndStandsAtItsBeginning) {
  Signal ramp(480);
  for (std::size_t i = 0; i < ramp.size(); ++i) {
    ramp[i] = static_cast<float>(i) / 1000;
  }
  auto buffer = mixer.createBuffer(recordingOf(48000, ramp));
  for (int round = 0; round < 2; ++round) {
    buffer->Play(0);
    const Signal start = renderLate(479 - Mixer::kDelay).left;
    EXPECT_EQ(buffer->GetStatus(), 1);
    EXPECT_NEAR(start[100], 0.100F, 0.0005);
    render(1);
    EXPECT_EQ(buffer->GetStatus(), 0);
    render(480);
    EXPECT_EQ(peak(render(100).left), 0);
  }
}

TEST_F(MixerTest, HowLongItPlaysFollowsItsFrequency) {
  auto buffer = mixer.createBuffer(recordingOf(22050, Signal(2205, 0.1F)));
  buffer->SetFrequency(11025);
  buffer->Play(0);
  render(9599);
  EXPECT_EQ(buffer->GetStatus(), 1);
  render(2);
  EXPECT_EQ(buffer->GetStatus(), 0);
}

TEST_F(MixerTest, ALoopRunsOnWithoutASeam) {
  auto buffer = mixer.createBuffer(recordingOf(22050, sine(441, 20, 0.5)));
  buffer->Play(1);
  render(2000);
  const SineFit fit = fitSine(render(48000).left, 1000);
  EXPECT_NEAR(fit.amplitude, 0.5, 0.001);
  EXPECT_LT(decibels(fit.restRms / 0.35), -70);
  EXPECT_EQ(buffer->GetStatus(), 1);
}

TEST_F(MixerTest, TheShortestRecordingsLoopToo) {
  for (const std::size_t frames : {1U, 2U, 3U, 25U}) {
    auto buffer = mixer.createBuffer(recordingOf(22050, Signal(frames, 0.5F)));
    buffer->SetFrequency(100000);
    buffer->Play(1);
    render(1000);
    EXPECT_NEAR(render(1000).left.back(), 0.5, 0.001) << frames;
    EXPECT_EQ(buffer->GetStatus(), 1);
  }
}

TEST_F(MixerTest, PlayDoesNotRestartWhatPlays) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(4800, 0.1F)));
  buffer->Play(0);
  render(4000);
  buffer->Play(0);
  render(801);
  EXPECT_EQ(buffer->GetStatus(), 0);
}

TEST_F(MixerTest, PlayChangesBetweenOnceAndLoop) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(4800, 0.1F)));
  buffer->Play(0);
  render(4000);
  buffer->Play(1);
  render(4000);
  EXPECT_EQ(buffer->GetStatus(), 1);  // at 3200 of the second round
  buffer->Play(0);
  render(1599);
  EXPECT_EQ(buffer->GetStatus(), 1);
  render(2);
  EXPECT_EQ(buffer->GetStatus(), 0);
}

TEST_F(MixerTest, APlayThatMeetsTheEndIsNotLost) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(480, 0.1F)));
  buffer->Play(0);
  render(480);
  buffer->Play(1);
  EXPECT_EQ(buffer->GetStatus(), 1);
  render(4800);
  EXPECT_EQ(buffer->GetStatus(), 1);
}

TEST_F(MixerTest, StopKeepsThePosition) {
  Signal steps(9600, 0.2F);
  std::fill(steps.begin() + 4800, steps.end(), 0.6F);
  auto buffer = mixer.createBuffer(recordingOf(48000, steps));
  buffer->Play(0);
  render(4000);
  buffer->Stop();
  EXPECT_EQ(buffer->GetStatus(), 0);
  render(9600);
  EXPECT_EQ(peak(render(480).left), 0);
  buffer->Play(0);
  const Signal out = renderLate(4000).left;  // 800 more of the first step, then the second
  EXPECT_NEAR(out[700], 0.2, 0.001);
  EXPECT_NEAR(out[900], 0.6, 0.001);
  render(1600 - Mixer::kDelay);
  EXPECT_EQ(buffer->GetStatus(), 0);
}

/// A recording of 1000 frames of silence but for one sample.
Signal clickAt(std::size_t frame) {
  Signal out(1000, 0.0F);
  out[frame] = 0.5F;
  return out;
}

std::size_t loudestFrame(const Signal& signal) {
  const auto louder = [](float one, float other) { return std::abs(one) < std::abs(other); };
  return static_cast<std::size_t>(std::max_element(signal.begin(), signal.end(), louder) - signal.begin());
}

TEST_F(MixerTest, PositionsAreBytesTakenDownToTheFrame) {
  struct Case {
    int sampleBytes;
    bool stereo;
    int byte;
    std::size_t frame;
  };
  for (const Case& c : {Case{1, false, 200, 200}, Case{2, false, 400, 200}, Case{2, false, 401, 200},
                        Case{2, true, 800, 200}, Case{2, true, 803, 200}, Case{1, true, 401, 200}}) {
    const Signal click = clickAt(300);
    auto buffer = mixer.createBuffer(recordingOf(48000, click, c.stereo ? click : Signal(), c.sampleBytes));
    EXPECT_EQ(buffer->dataBytes(), 1000 * c.sampleBytes * (c.stereo ? 2 : 1));
    buffer->SetCurrentPosition(c.byte);
    buffer->Play(0);
    EXPECT_EQ(loudestFrame(renderLate(700).left), 300 - c.frame) << c.byte;
  }
}

TEST_F(MixerTest, ValuesOutOfRangeAreFailedCalls) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(100, 0.1F)));
  EXPECT_THROW(buffer->SetVolume(1), PlatformError);
  EXPECT_THROW(buffer->SetVolume(-10001), PlatformError);
  EXPECT_THROW(buffer->SetPan(10001), PlatformError);
  EXPECT_THROW(buffer->SetFrequency(99), PlatformError);
  EXPECT_THROW(buffer->SetFrequency(100001), PlatformError);
  EXPECT_THROW(buffer->SetCurrentPosition(200), PlatformError);
  EXPECT_THROW(buffer->SetCurrentPosition(-1), PlatformError);
  EXPECT_THROW(buffer->Play(2), PlatformError);
  buffer->SetCurrentPosition(199);
}

TEST_F(MixerTest, WhatIsToldBetweenTwoRendersIsCarriedOutTogether) {
  auto buffer = mixer.createBuffer(recordingOf(48000, clickAt(300)));
  buffer->Play(0);
  render(400);
  buffer->Stop();
  buffer->SetCurrentPosition(0);
  buffer->Play(0);
  EXPECT_EQ(loudestFrame(renderLate(700).left), 300U);
  buffer->Stop();
  buffer->SetCurrentPosition(0);
  render(300);
  EXPECT_EQ(buffer->GetStatus(), 0);
  buffer->Play(0);
  EXPECT_EQ(loudestFrame(renderLate(700).left), 300U);
}

// ---- No clicks

/// The largest step between neighbouring samples.
double largestStep(const Signal& signal) {
  double largest = 0;
  for (std::size_t i = 1; i < signal.size(); ++i) {
    largest =
        std::max(largest, std::abs(static_cast<double>(signal[i]) - static_cast<double>(signal[i - 1])));
  }
  return largest;
}

TEST_F(MixerTest, VolumeAndPanGlideOverFiveMilliseconds) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(4800, 0.5F)));
  buffer->Play(1);
  renderLate(1000);
  buffer->SetVolume(-10000);
  Signal out = render(400).left;
  EXPECT_LT(largestStep(out), 0.5 / 200);
  EXPECT_NEAR(out[Mixer::kDelay + 120], 0.25, 0.01);
  EXPECT_EQ(out[Mixer::kDelay + 241], 0);
  buffer->SetVolume(0);
  renderLate(1000);
  buffer->SetPan(10000);
  out = render(400).left;
  EXPECT_LT(largestStep(out), 0.5 / 200);
  EXPECT_EQ(out[Mixer::kDelay + 241], 0);
}

TEST_F(MixerTest, FrequencyGlidesOverFiveMilliseconds) {
  Signal ramp(48000);
  for (std::size_t i = 0; i < ramp.size(); ++i) {
    ramp[i] = static_cast<float>(i) / 48000;
  }
  auto buffer = mixer.createBuffer(recordingOf(48000, ramp));
  buffer->Play(0);
  renderLate(1000);
  buffer->SetFrequency(96000);
  const Signal out = render(400).left;
  const auto speedAt = [&out](std::size_t i) { return (out[i + 1] - out[i]) * 48000; };
  EXPECT_NEAR(speedAt(Mixer::kDelay + 60), 1.25, 0.02);
  EXPECT_NEAR(speedAt(Mixer::kDelay + 120), 1.5, 0.02);
  EXPECT_NEAR(speedAt(Mixer::kDelay + 260), 2.0, 0.02);
}

TEST_F(MixerTest, ASilentBufferTakesItsSettingsAtOnce) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(4800, 0.5F)));
  buffer->SetVolume(-2000);
  buffer->SetPan(2000);
  buffer->SetFrequency(24000);
  buffer->Play(0);
  const Stereo out = renderLate(100);
  EXPECT_NEAR(out.right[20], 0.05, 0.001);
  EXPECT_NEAR(out.left[20], 0.005, 0.0001);
}

TEST_F(MixerTest, AnAttackSoundsAsItWasRecorded) {
  auto buffer = mixer.createBuffer(recordingOf(48000, clickAt(5)));
  buffer->Play(0);
  const Signal out = renderLate(100).left;
  EXPECT_EQ(loudestFrame(out), 5U);
  EXPECT_NEAR(out[5], 0.5, 0.5 * 0.07);  // but for what lies above the interpolator's cutoff
}

TEST_F(MixerTest, StartsInTheMiddleAndStopsDoNotClick) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(4800, 0.5F)));
  buffer->SetCurrentPosition(2000);
  buffer->Play(1);
  EXPECT_LT(largestStep(renderLate(1000).left), 0.5 / 50);
  buffer->Stop();
  const Signal out = render(400).left;
  EXPECT_LT(largestStep(out), 0.5 / 80);
  EXPECT_EQ(peak(part(out, 300, 100)), 0);
}

TEST_F(MixerTest, StoppedAndStartedInOneBreathItDoesNotClick) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(9600, 0.5F)));
  buffer->Play(0);
  render(1000);
  for (int i = 0; i < 6; ++i) {
    buffer->Stop();
    render(48);  // the end is still fading out ...
    buffer->Play(0);
    EXPECT_LT(largestStep(render(24).left), 0.5 / 40) << i;  // ... when the start is cut off in its fade
    buffer->Stop();
    EXPECT_LT(largestStep(render(700).left), 0.5 / 40) << i;
    buffer->Play(0);
    EXPECT_LT(largestStep(render(700).left), 0.5 / 40) << i;
  }
}

TEST_F(MixerTest, AStartUnderTheEndOfTheSoundBeforeGlidesToItsLevel) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(9600, 0.5F)));
  buffer->Play(0);
  render(1000);
  buffer->Stop();
  render(16);
  buffer->SetVolume(-4000);
  buffer->SetPan(3000);
  buffer->SetCurrentPosition(2);
  buffer->Play(0);
  const Stereo out = render(1000);
  EXPECT_LT(largestStep(out.left), 0.5 / 40);
  EXPECT_LT(largestStep(out.right), 0.5 / 40);
  EXPECT_NEAR(out.right.back(), 0.005, 0.0005);
}

TEST_F(MixerTest, ALoopStartsWithoutAClick) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(4800, 0.5F)));
  buffer->Play(1);
  EXPECT_LT(largestStep(render(1000).left), 0.5 / 50);
}

TEST_F(MixerTest, ABufferDestroyedInFullSoundFadesOut) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(4800, 0.5F)));
  buffer->Play(1);
  render(1000);
  buffer.reset();
  const Signal out = render(400).left;
  EXPECT_LT(largestStep(out), 0.5 / 80);
  EXPECT_EQ(peak(part(out, 300, 100)), 0);
}

TEST_F(MixerTest, ASeekCrossesOverInSixMilliseconds) {
  Signal steps(9600, 0.2F);
  std::fill(steps.begin() + 4800, steps.end(), 0.6F);
  auto buffer = mixer.createBuffer(recordingOf(48000, steps));
  buffer->Play(1);
  renderLate(1000);
  buffer->SetCurrentPosition(2 * 6000);
  const Signal out = render(400).left;
  EXPECT_LT(largestStep(out), 0.4 / 100);
  EXPECT_NEAR(out[Mixer::kDelay], 0.2, 0.01);
  EXPECT_NEAR(out[Mixer::kDelay + 144], 0.4, 0.02);
  EXPECT_NEAR(out[Mixer::kDelay + 290], 0.6, 0.001);
}

/// Power above 6 kHz of a looping engine that is set back ten times a second.
double engineHiss(Mixer& mixer, int stepInBytes, int frequency) {
  auto buffer = mixer.createBuffer(recordingOf(22050, engineTape(22050 * 4)));
  buffer->SetFrequency(frequency);
  buffer->SetCurrentPosition(60000);
  buffer->Play(1);
  std::vector<float> interleaved(2 * 48000 * 3);
  unsigned jitter = 1;
  for (int tick = 0; tick < 30; ++tick) {
    if (stepInBytes > 0) {
      jitter = jitter * 1103515245 + 12345;
      buffer->SetCurrentPosition(60000 + stepInBytes + static_cast<int>(jitter >> 16) % 1500);
    }
    mixer.render(&interleaved[static_cast<std::size_t>(tick) * 9600], 4800);
  }
  Signal left;
  for (std::size_t i = 9600; i < interleaved.size(); i += 2) {
    left.push_back(interleaved[i]);
  }
  return rms(above(left, 6000));
}

TEST_F(MixerTest, SeeksInALoopingEngineAddAtMostOneDecibelAboveSixKilohertz) {
  for (const int frequency : {22051, 30000, 51850}) {
    const double plain = engineHiss(mixer, 0, frequency);
    const double scrubbed = engineHiss(mixer, 1, frequency);
    EXPECT_LT(decibels(scrubbed / plain), 1.0) << frequency;
  }
}

TEST_F(MixerTest, ASeekKeepsTheLoudness) {
  // Strangers (noise) and likes (a sine, set back by whole turns): no dip, no bump.
  for (const bool alike : {false, true}) {
    auto buffer = mixer.createBuffer(recordingOf(48000, alike ? sine(48000, 480, 0.3) : noise(48000, 0.3)));
    buffer->Play(1);
    render(1000);
    const double usual = rms(render(48000).left);
    double middle = 0;
    for (int seek = 0; seek < 200; ++seek) {
      render(1100);
      buffer->SetCurrentPosition(2 * (100 * (seek * 37 % 400)));
      middle += std::pow(rms(part(render(100 + 200).left, Mixer::kDelay + 96, 96)), 2) / 200;
    }
    EXPECT_NEAR(decibels(std::sqrt(middle) / usual), 0, 0.5) << alike;
  }
}

TEST_F(MixerTest, ManySeeksInARowNeitherClickNorPileUp) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(48000, 0.3F)));
  buffer->Play(1);
  renderLate(1000);
  Signal all;
  for (int seek = 0; seek < 300; ++seek) {
    buffer->SetCurrentPosition(2 * (seek * 7919 % 40000));
    const Signal out = render(72).left;
    all.insert(all.end(), out.begin(), out.end());
  }
  EXPECT_LT(largestStep(all), 0.3 / 30);
  EXPECT_LT(peak(all), 0.45);
}

// ---- The sum

TEST_F(MixerTest, TheSumNeverClips) {
  std::vector<std::unique_ptr<SoundBuffer>> buffers;
  for (int i = 0; i < 16; ++i) {
    const auto n = static_cast<unsigned>(i);
    buffers.push_back(mixer.createBuffer(
        recordingOf(22050, i % 2 == 0 ? sine(22050, 50 + 100 * i, 1) : noise(22050, 1, n))));
    buffers.back()->SetPan(i % 3 * 1000 - 1000);
    buffers.back()->Play(1);
    render(3000);
  }
  double loudest = 0;
  for (int second = 0; second < 3; ++second) {
    const Stereo out = render(48000);
    loudest = std::max({loudest, peak(out.left), peak(out.right)});
    buffers[0]->SetVolume(-10000 * (second % 2));
  }
  EXPECT_LE(loudest, Limiter::kCeiling + 1e-6);
  EXPECT_GT(loudest, 0.8);
}

/// Of a whole second of both sides, in decibels, by a meter of another make.
double truePeak(const Stereo& out) {
  ebur128_state* const meter = ebur128_init(2, Mixer::kRate, EBUR128_MODE_TRUE_PEAK);
  for (std::size_t i = 0; i < out.left.size(); ++i) {
    const float frame[] = {out.left[i], out.right[i]};
    ebur128_add_frames_float(meter, frame, 1);
  }
  double left = 0, right = 0;
  ebur128_true_peak(meter, 0, &left);
  ebur128_true_peak(meter, 1, &right);
  ebur128_state* finished = meter;
  ebur128_destroy(&finished);
  return decibels(std::max(left, right));
}

TEST_F(MixerTest, TheCurveBetweenTheSamplesStaysBelowMinusOneDecibel) {
  constexpr int kFrames = 48000;
  Signal betweenSamples(kFrames), square(kFrames), bursts(kFrames), steps(kFrames);
  for (int i = 0; i < kFrames; ++i) {
    // Its peaks lie halfway between two samples, three decibels above both.
    betweenSamples[i] = i / 2 % 2 == 0 ? 1.0F : -1.0F;
    square[i] = i / 7 % 2 == 0 ? 1.0F : -1.0F;
    bursts[i] = i % 4800 < 300 ? betweenSamples[i] : 0.1F * betweenSamples[i];
    steps[i] = i % 997 == 0 ? 1.0F : i % 997 == 1 ? 0.9F : i % 991 == 3 ? -1.0F : 0.0F;
  }
  const std::vector<std::pair<const char*, Signal>> loudOnes = {{"between samples", betweenSamples},
                                                                {"square", square},
                                                                {"bursts", bursts},
                                                                {"steps", steps},
                                                                {"noise", noise(kFrames, 1, 5)},
                                                                {"high", sine(kFrames, 17000, 1)},
                                                                {"low", sine(kFrames, 60, 1)}};
  for (const auto& [name, signal] : loudOnes) {
    auto one = mixer.createBuffer(recordingOf(48000, signal));
    auto other = mixer.createBuffer(recordingOf(48000, noise(kFrames, 1, 9)));
    auto third = mixer.createBuffer(recordingOf(48000, signal));
    for (const int volume : {-10000, -600, 0}) {
      other->SetVolume(volume);
      third->SetVolume(volume);
      third->SetFrequency(48000 + volume / 10);
      one->Play(1);
      other->Play(1);
      third->Play(1);
      const double loudest = truePeak(render(kFrames));
      EXPECT_LE(loudest, -1.0) << name << " with noise at " << volume;
      EXPECT_GT(loudest, -3.0) << name << " with noise at " << volume;
    }
  }
}

TEST(Limiter, LetsTheSoundComeBackWithinATenthOfASecond) {
  constexpr float kSoft = 0.1F;
  constexpr std::size_t kPeak = 1000;
  constexpr std::size_t kTwoMs = 96, kEightyMs = 3840;
  std::vector<float> left(48000, kSoft), right = left;
  left[kPeak] = 2 * Limiter::kCeiling;
  Limiter limiter;
  limiter.process(left.data(), right.data(), static_cast<int>(left.size()));
  const auto missing = [&](std::size_t after) { return 1 - right[kPeak + Limiter::kDelay + after] / kSoft; };
  EXPECT_GT(missing(kTwoMs), 0.4);
  EXPECT_NEAR(missing(kTwoMs + kEightyMs) / missing(kTwoMs), 0.368, 0.02);
  EXPECT_EQ(missing(46000), 0);
}

TEST_F(MixerTest, BelowTheCeilingNothingIsChanged) {
  // Whatever the limiter is given, it gives the same but for the delay.
  const Signal left = sine(48000, 997, 0.87), right = sine(48000, 5003, 0.6);
  Signal outLeft = left, outRight = right;
  Limiter limiter;
  limiter.process(outLeft.data(), outRight.data(), 48000);
  for (std::size_t i = 0; i + Limiter::kDelay < left.size(); ++i) {
    ASSERT_EQ(outLeft[i + Limiter::kDelay], left[i]) << i;
    ASSERT_EQ(outRight[i + Limiter::kDelay], right[i]) << i;
  }
}

TEST_F(MixerTest, AfterALoudMomentTheLevelComesBack) {
  auto quiet = mixer.createBuffer(recordingOf(48000, sine(48000, 997, 0.5)));
  auto loud = mixer.createBuffer(recordingOf(48000, sine(4800, 50, 1)));
  quiet->Play(1);
  render(4800);
  loud->Play(0);
  render(4800);
  render(48000);
  EXPECT_NEAR(decibels(fitSine(render(9600).left, 997).amplitude), decibels(0.5), 0.01);
}

TEST_F(MixerTest, MutedItRunsOnUnheardButForTheVoice) {
  auto buffer = mixer.createBuffer(recordingOf(48000, Signal(9600, 0.5F)));
  buffer->Play(0);
  renderLate(1000);
  mixer.setMuted(true);
  const Signal fading = render(400).left;
  EXPECT_LT(largestStep(fading), 0.5 / 200);
  EXPECT_EQ(peak(part(fading, 300, 100)), 0);
  speak(speechOf(2205));
  EXPECT_GT(peak(render(4800).left), 0.2);
  EXPECT_EQ(buffer->GetStatus(), 1);
  render(3500);
  EXPECT_EQ(buffer->GetStatus(), 0);
  mixer.setMuted(false);
  buffer->Play(0);
  EXPECT_NEAR(peak(render(1000).left), 0.5, 0.05);
}

// ---- The voice

TEST_F(MixerTest, DuckingLowersTheSoundsUnderAVoiceAndNotTheVoice) {
  auto buffer = mixer.createBuffer(recordingOf(48000, sine(48000, 997, 0.2)));
  buffer->Play(1);
  mixer.setDucking(8);
  render(4800);
  mixer.setDucked(true);
  render(Mixer::kDelay + 48 * 30);
  EXPECT_NEAR(decibels(fitSine(render(4800).left, 997).amplitude), decibels(0.2) - 8, 0.05);
  mixer.setDucked(false);
  render(Mixer::kDelay + 48 * 125);
  const double halfWay = decibels(fitSine(render(480).left, 997).amplitude);
  EXPECT_GT(halfWay, decibels(0.2) - 6);
  EXPECT_LT(halfWay, decibels(0.2) - 1);
  render(48 * 125);
  EXPECT_NEAR(decibels(fitSine(render(4800).left, 997).amplitude), decibels(0.2), 0.05);
}

TEST_F(MixerTest, DuckingLeavesTheVoiceAlone) {
  std::array<float, 2> loudest{};
  for (const bool isDucked : {false, true}) {
    Mixer fresh;
    fresh.setDucking(20);
    fresh.setDucked(isDucked);
    std::vector<float> out(2 * 9600);
    fresh.render(out.data(), 4800);
    fresh.voice().write(fresh.voice().ticket(), 22050, speechOf(4000));
    fresh.render(out.data(), 9600);
    loudest[isDucked ? 1 : 0] = *std::max_element(out.begin(), out.end());
  }
  EXPECT_GT(loudest[0], 0.1F);
  EXPECT_EQ(loudest[0], loudest[1]);
}

TEST_F(MixerTest, MutingGoesBeforeDucking) {
  auto buffer = mixer.createBuffer(recordingOf(48000, sine(48000, 997, 0.2)));
  buffer->Play(1);
  mixer.setDucking(8);
  mixer.setDucked(true);
  mixer.setMuted(true);
  render(4800);
  EXPECT_EQ(peak(render(4800).left), 0);
}

TEST_F(MixerTest, VolumeTurnsEverythingDown) {
  auto buffer = mixer.createBuffer(recordingOf(48000, sine(48000, 997, 0.2)));
  buffer->Play(1);
  mixer.setVolume(6);
  render(4800);
  EXPECT_NEAR(decibels(fitSine(render(4800).left, 997).amplitude), decibels(0.2) - 6, 0.05);
}

TEST_F(MixerTest, EarsAreExchangedExactly) {
  const auto recording = recordingOf(48000, sine(48000, 400, 0.5), sine(48000, 900, 0.25));
  const auto play = [&](bool swapped) {
    Mixer other;
    other.setEarsSwapped(swapped);
    auto buffer = other.createBuffer(recording);
    buffer->SetPan(-700);
    buffer->Play(1);
    std::vector<float> interleaved(2 * 4800);
    other.render(interleaved.data(), 4800);
    return interleaved;
  };
  std::vector<float> plain = play(false);
  const std::vector<float> swapped = play(true);
  EXPECT_NE(plain, swapped);
  for (std::size_t i = 0; i < plain.size(); i += 2) std::swap(plain[i], plain[i + 1]);
  EXPECT_EQ(plain, swapped);
}

// ---- Silence

TEST_F(MixerTest, IsSilentOnceTheLastSoundHasBeenGivenOut) {
  EXPECT_FALSE(mixer.isSilentFor(4800));
  render(4800);
  EXPECT_TRUE(mixer.isSilentFor(4800));
  auto buffer = mixer.createBuffer(recordingOf(48000, sine(4800, 400, 0.5)));
  EXPECT_TRUE(mixer.isSilentFor(4800)) << "nobody has played it";
  buffer->Play(0);
  EXPECT_FALSE(mixer.isSilentFor(4800)) << "before anything of it was rendered";
  render(4800);
  EXPECT_FALSE(mixer.isSilentFor(Mixer::kDelay));
  render(4900);
  EXPECT_TRUE(mixer.isSilentFor(Mixer::kDelay));
  EXPECT_FALSE(mixer.isSilentFor(5000));
  EXPECT_EQ(peak(render(4800).left), 0);
  EXPECT_TRUE(mixer.isSilentFor(4800));
}

TEST_F(MixerTest, IsNotSilentWhileItSpeaks) {
  render(4800);
  speak(speechOf(2205));
  EXPECT_FALSE(mixer.isSilentFor(Mixer::kDelay));
  render(4600);
  EXPECT_FALSE(mixer.isSilentFor(Mixer::kDelay));
  render(600);
  EXPECT_TRUE(mixer.isSilentFor(Mixer::kDelay));
}

TEST_F(MixerTest, WhateverBeginsToSoundWakes) {
  int wakings = 0;
  mixer.setWaker([&] { ++wakings; });
  auto buffer = mixer.createBuffer(recordingOf(48000, sine(4800, 400, 0.5)));
  buffer->SetVolume(-100);
  buffer->SetCurrentPosition(4);
  buffer->Stop();
  EXPECT_EQ(wakings, 0);
  buffer->Play(0);
  EXPECT_EQ(wakings, 1);
  speak(speechOf(2205));
  EXPECT_EQ(wakings, 2);
  mixer.setWaker(nullptr);
  buffer->Play(0);
  speak(speechOf(2205));
  EXPECT_EQ(wakings, 2);
}

TEST_F(MixerTest, TheVoiceIsHeardOnBothSidesAtItsOwnPitch) {
  for (const int rate : {8000, 16000, 22050, 44100, 48000}) {
    speak(speechOf(4000, 16384), rate);
    const double pitch = rate / 50.0;
    const Stereo out = render(3000);
    const Signal middle = part(out.left, 400, 2400);
    EXPECT_NEAR(fitSine(middle, pitch).amplitude, 0.5, 0.005) << rate;
    EXPECT_LT(decibels(fitSine(middle, pitch).restRms / 0.35), -60) << rate;
    EXPECT_EQ(out.left, out.right);
    render(30000);
  }
}

TEST_F(MixerTest, TheVoiceSpeaksUntilItsLastSampleHasBeenHeard) {
  EXPECT_FALSE(mixer.voice().isSpeaking());
  speak(speechOf(2205));  // 0.1 s
  EXPECT_TRUE(mixer.voice().isSpeaking());
  render(4790);
  EXPECT_TRUE(mixer.voice().isSpeaking());
  render(250);
  EXPECT_FALSE(mixer.voice().isSpeaking());
  mixer.voice().setDeviceLatency(960);
  speak(speechOf(2205));
  render(5040);
  EXPECT_TRUE(mixer.voice().isSpeaking());
  render(1100);
  EXPECT_FALSE(mixer.voice().isSpeaking());
}

TEST_F(MixerTest, ACancelledVoiceIsSilentWithinTenMilliseconds) {
  speak(speechOf(20000));
  render(4800);
  mixer.voice().cancel();
  EXPECT_FALSE(mixer.voice().isSpeaking());
  const Signal out = render(2000).left;
  EXPECT_EQ(peak(part(out, 480, 1520)), 0);
  EXPECT_LT(largestStep(out), 0.05);
}

TEST_F(MixerTest, AfterACancelOnlyTheNewTicketIsHeard) {
  VoiceStream& voice = mixer.voice();
  const std::uint32_t old = voice.ticket();
  speak(speechOf(20000, 3000));
  render(480);
  const std::uint32_t fresh = voice.cancel();
  EXPECT_TRUE(voice.isCancelled(old));
  EXPECT_EQ(voice.write(old, 22050, speechOf(100)), 0U);
  EXPECT_FALSE(voice.isSpeaking());
  EXPECT_EQ(voice.write(fresh, 22050, speechOf(2205, 16000)), 2205U);
  EXPECT_TRUE(voice.isSpeaking());
  render(600);
  EXPECT_NEAR(peak(render(3000).left), 16000 / 32768.0, 0.01);
  render(3000);
  EXPECT_FALSE(voice.isSpeaking());
  EXPECT_EQ(peak(render(1000).left), 0);
}

TEST_F(MixerTest, CancelledBeforeAnythingWasHeardNothingIsHeard) {
  speak(speechOf(2000));
  mixer.voice().cancel();
  EXPECT_EQ(peak(render(4800).left), 0);
  speak(speechOf(2000));
  EXPECT_GT(peak(render(4800).left), 0.2);
}

TEST_F(MixerTest, AFullStreamTakesNoMoreAndMakesRoomAsItPlays) {
  VoiceStream& voice = mixer.voice();
  const auto speech = speechOf(VoiceStream::kCapacity + 1000);
  EXPECT_EQ(voice.write(voice.ticket(), 22050, speech), VoiceStream::kCapacity);
  EXPECT_EQ(voice.write(voice.ticket(), 22050, speech), 0U);
  render(4800);
  const std::size_t taken = voice.write(voice.ticket(), 22050, speech);
  EXPECT_NEAR(static_cast<double>(taken), 2205, 60);
}

TEST_F(MixerTest, AnotherRateWaitsUntilTheFirstIsPlayedOut) {
  VoiceStream& voice = mixer.voice();
  speak(speechOf(2205), 22050);
  EXPECT_EQ(voice.write(voice.ticket(), 16000, speechOf(100)), 0U);
  render(5200);
  EXPECT_EQ(voice.write(voice.ticket(), 16000, speechOf(100)), 100U);
}

// ---- House-keeping

TEST_F(MixerTest, TheSameCallsGiveTheSameSamples) {
  const auto session = [] {
    Mixer own;
    auto engine = own.createBuffer(recordingOf(22050, engineTape(44100)));
    auto cue = own.createBuffer(recordingOf(16000, noise(16000, 0.9)));
    engine->Play(1);
    std::vector<float> out(2 * 48 * 500);
    for (int ms = 0; ms < 500; ++ms) {
      if (ms % 100 == 7) {
        engine->SetCurrentPosition(ms * 100);
        engine->SetFrequency(20000 + ms * 10);
        cue->SetPan(ms * 10);
        cue->Play(ms % 200 == 7 ? 1 : 0);
      }
      own.render(&out[static_cast<std::size_t>(ms) * 96], 48);
    }
    return out;
  };
  EXPECT_EQ(session(), session());
}

TEST_F(MixerTest, BuffersComeAndGoWithoutEnd) {
  const auto recording = recordingOf(48000, Signal(480, 0.1F));
  for (int i = 0; i < 10 * Mixer::kMostBuffers; ++i) {
    auto buffer = mixer.createBuffer(recording);
    buffer->Play(1);
    render(48);
  }
  EXPECT_LT(recording.use_count(), 20);
}

TEST_F(MixerTest, ARecordingOfNothingIsRefused) {
  EXPECT_THROW(mixer.createBuffer(recordingOf(48000, {})), PlatformError);
}

TEST_F(MixerTest, TooManyBuffersAreRefused) {
  const auto recording = recordingOf(48000, Signal(480, 0.1F));
  std::vector<std::unique_ptr<SoundBuffer>> buffers;
  for (int i = 0; i < Mixer::kMostBuffers; ++i) {
    buffers.push_back(mixer.createBuffer(recording));
  }
  EXPECT_THROW(mixer.createBuffer(recording), PlatformError);
  buffers.pop_back();
  render(48);
  EXPECT_NO_THROW(mixer.createBuffer(recording));
}

TEST_F(MixerTest, RenderingAllocatesNothing) {
  std::vector<std::unique_ptr<SoundBuffer>> buffers;
  for (int i = 0; i < 16; ++i) {
    buffers.push_back(mixer.createBuffer(recordingOf(22050, noise(5000, 1, static_cast<unsigned>(i)))));
    buffers.back()->Play(i % 2);
  }
  speak(speechOf(5000));
  std::vector<float> out(2 * 256);
  for (int round = 0; round < 200; ++round) {
    buffers[3]->SetCurrentPosition(round * 40);
    buffers[4]->SetFrequency(100 + round * 400);
    buffers[5]->SetVolume(-round);
    if (round == 50) {
      mixer.voice().cancel();
      buffers[7].reset();
      mixer.setMuted(true);
    }
    countingAllocations = true;
    mixer.render(out.data(), 256);
    countingAllocations = false;
  }
  EXPECT_EQ(allocations, 0);
}

TEST_F(MixerTest, TwoThreadsGetAlong) {
  std::atomic<bool> done = false;
  double loudest = 0;
  std::thread device([&] {
    std::vector<float> out(2 * 256);
    while (!done) {
      mixer.render(out.data(), 256);
      loudest = std::max(loudest, peak(out));
    }
  });
  std::thread speaker([&] {
    const auto speech = speechOf(500);
    while (!done) {
      mixer.voice().write(mixer.voice().ticket(), 22050, speech);
      std::this_thread::yield();
    }
  });
  const auto recording = recordingOf(22050, noise(3000, 0.8));
  std::vector<std::unique_ptr<SoundBuffer>> buffers(8);
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
  for (int round = 0; std::chrono::steady_clock::now() < end; ++round) {
    auto& buffer = buffers[static_cast<std::size_t>(round) % buffers.size()];
    if (!buffer || round % 50 == 0) {
      buffer.reset();
      try {
        buffer = mixer.createBuffer(recording);
      } catch (const PlatformError&) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        continue;  // the device has not caught up with what was let go
      }
    }
    buffer->SetCurrentPosition(round % 5999);
    buffer->SetFrequency(20000 + round % 30000);
    buffer->SetPan(round % 100);
    buffer->Play(round % 3 == 0 ? 1 : 0);
    buffer->GetStatus();
    if (round % 7 == 0) {
      buffer->Stop();
      EXPECT_EQ(buffer->GetStatus(), 0);
    }
    if (round % 11 == 0) {
      mixer.voice().cancel();
    }
  }
  // What is left to play ends, and everybody sees it. The last place may be empty
  // where the device never caught up.
  while (!buffers[0]) {
    carryOn([&] { buffers[0] = mixer.createBuffer(recording); });
    std::this_thread::yield();
  }
  buffers[0]->Play(0);
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (buffers[0]->GetStatus() == SoundBuffer::kPlaying && std::chrono::steady_clock::now() < limit) {
    std::this_thread::yield();
  }
  EXPECT_EQ(buffers[0]->GetStatus(), 0);
  done = true;
  device.join();
  speaker.join();
  EXPECT_LE(loudest, 1.0);
}

}  // namespace
}  // namespace vorn
