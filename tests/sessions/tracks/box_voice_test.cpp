// The voice of the pit box as it is heard in the mix, between engine, tyres and
// crowd: each of its numbers must be there at the moment at which the car's speed
// has brought the tape to it.

#include <gtest/gtest.h>

#include <cmath>

#include "platform/mixing/wav_file.h"
#include "recipes/pit_box.h"
#include "sessions/tracks/one_race.h"
#include "sessions/tracks/pit_stop_driver.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

constexpr int kMixRate = 48000;
constexpr int kThinning = 4;  // speech needs no more; comparing is sixteen times quicker
constexpr double kRate = kMixRate / kThinning;
constexpr std::size_t kWord = kMixRate / kThinning / 2;  // half a second

/// The left side of the mix, where the pits are.
class LeftEar : public RenderSink {
 public:
  void write(std::span<const std::int16_t> samples) override {
    for (std::size_t i = 0; i < samples.size(); i += 2) {
      sum_ += samples[i];
      if (++count_ % kThinning != 0) continue;
      heard.push_back(sum_ / kThinning);
      sum_ = 0;
    }
  }
  void flush() override {}

  std::vector<double> heard;

 private:
  double sum_ = 0;
  int count_ = 0;
};

/// Where the tape of the box voice stands, at the rate of `LeftEar`, from `start` (ms) on.
struct Tape {
  std::int64_t start = -1;
  std::vector<double> position;  ///< frames of the recording
};

Tape tapeOf(const TraceRecord& trace, double frames) {
  Tape tape;
  double hertz = 22050;
  double at = 0;
  bool isInSlot = false;
  const auto runUntil = [&](std::int64_t ms) {
    const auto samples = static_cast<std::size_t>(static_cast<double>(ms - tape.start) * kRate / 1000);
    for (; tape.position.size() < samples && at < frames; at += hertz / kRate) tape.position.push_back(at);
  };
  for (const TraceLine& line : trace.of("sound")) {
    if (line.at("buffer") != "warnBuffer") continue;
    const std::int64_t ms = line.at("ms");
    if (isInSlot && tape.start >= 0) runUntil(ms);
    if (line.at("op") == "create") isInSlot = line.at("value") == "vorn1t73.wav";
    if (isInSlot && line.at("op") == "Play") tape.start = ms;
    if (isInSlot && line.at("op") == "SetFrequency") hertz = line.at("value").get<double>();
  }
  return tape;
}

/// Where the car was at this moment (ms), by its last tick before.
double placeAt(const TraceRecord& trace, double ms) {
  double place = -1;
  for (const TraceLine& tick : trace.ticks()) {
    if (tick.at("ms").get<double>() <= ms) place = tick.at("lapPosition").get<double>();
  }
  return place;
}

double correlation(const std::vector<double>& expected, const double* heard) {
  double product = 0, expectedPower = 0, heardPower = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    product += expected[i] * heard[i];
    expectedPower += expected[i] * expected[i];
    heardPower += heard[i] * heard[i];
  }
  return product / std::sqrt(expectedPower * heardPower);
}

TEST(BoxVoice, IsHeardAtTheRightMoment) {
  LeftEar ear;
  PitStopDriver driver(kMaple, {.brakesOn = sounds::kPitBoxNumbers[4].seconds + 0.5});
  const OneRace race(
      1, Device::kWheel,
      [&](const TickReport& tick) {
        const std::string statements = driver.after(tick);
        // A standing car: the approach is over.
        return statements +
               (driver.leg() == PitStopDriver::Leg::kApproach && tick.speed <= 1 ? "wait 300\nend\n" : "");
      },
      &ear);
  ASSERT_EQ(race.exitStatus(), 0) << race.diagnostics();
  const Recording voice = readWav("vorn1t73.wav", race.fileBytes("vorn1t73.wav"));
  const Tape tape = tapeOf(race.trace(), static_cast<double>(voice.frames()));
  ASSERT_GE(tape.start, 0);

  for (const sounds::PitBoxNumber& number : sounds::kPitBoxNumbers) {
    SCOPED_TRACE(number.word);
    const auto onset =
        std::lower_bound(tape.position.begin(), tape.position.end(), number.seconds * voice.rate);
    ASSERT_NE(onset, tape.position.end());
    // The word as the tape plays it, half a second of it.
    std::vector<double> word;
    for (auto at = onset; word.size() < kWord && at != tape.position.end(); ++at) {
      word.push_back(voice.planes[0][static_cast<std::size_t>(*at)]);
    }
    const auto expectedAt = static_cast<std::int64_t>(static_cast<double>(tape.start) * kRate / 1000) +
                            (onset - tape.position.begin());
    constexpr std::int64_t kSearch = static_cast<std::int64_t>(kRate / 5);
    std::int64_t found = 0;
    double best = -1;
    for (std::int64_t shift = -kSearch; shift <= kSearch; ++shift) {
      const double match = correlation(word, &ear.heard[static_cast<std::size_t>(expectedAt + shift)]);
      if (match <= best) continue;
      best = match;
      found = shift;
    }
    EXPECT_GT(best, 0.4);
    EXPECT_NEAR(static_cast<double>(found) * 1000 / kRate, 0, 3);  // milliseconds
    // At about 50 mph the tape is a map of the lane: a second of it is 500 units.
    const double heardAt = static_cast<double>(expectedAt) * 1000 / kRate;
    EXPECT_NEAR(placeAt(race.trace(), heardAt), 500 * number.seconds, 100);
  }
}

}  // namespace
}  // namespace vorn
