#include "codriver/tones.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "platform/errors.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Writes down what its buffers are told.
class NotedDevice : public SoundDevice {
 public:
  std::vector<std::string> calls;
  bool fails = false;

  void SetCooperativeLevel(int) override {}
  std::unique_ptr<SoundBuffer> CreateSoundBufferFromFile(const std::string&, const std::string& fileName,
                                                         int) override {
    throw PlatformError("create", fileName, "tones come from no file");
  }
  std::unique_ptr<SoundBuffer> CreateSoundBufferFromSamples(const std::string& slot, const std::string&,
                                                            std::span<const float>, int) override {
    if (fails) throw PlatformError("create", slot, "there is no room");
    return std::make_unique<Buffer>(*this, slot);
  }
  std::vector<std::string> taken() { return std::exchange(calls, {}); }

 private:
  class Buffer : public SoundBuffer {
   public:
    Buffer(NotedDevice& device, std::string slot) : device_(device), slot_(std::move(slot)) {}

   private:
    void note(const std::string& what) { device_.calls.push_back(slot_ + " " + what); }
    void doPlay(bool looping) override { note(looping ? "loop" : "play"); }
    void doStop() override { note("stop"); }
    void doSetVolume(int value) override { note("volume " + std::to_string(value)); }
    void doSetPan(int value) override { note("pan " + std::to_string(value)); }
    void doSetFrequency(int hertz) override { note("frequency " + std::to_string(hertz)); }
    void doSetCurrentPosition(int) override {}
    int doGetStatus() override { return 0; }
    int doGetFrequency() override { return kToneRate; }
    int doDataBytes() const override { return 2; }

    NotedDevice& device_;
    std::string slot_;
  };
};

TEST(ToneWave, IsALoopWithoutAStep) {
  const std::vector<float> wave = toneWave();
  const auto [low, high] = std::minmax_element(wave.begin(), wave.end());
  EXPECT_LT(*high, 0.6F);
  EXPECT_GT(*low, -0.6F);
  float steepest = 0;
  for (std::size_t i = 1; i < wave.size(); ++i)
    steepest = std::max(steepest, std::fabs(wave[i] - wave[i - 1]));
  EXPECT_LE(std::fabs(wave.front() - wave.back()), steepest);
}

TEST(ToneBoard, PlaysAFigureInItsTime) {
  NotedDevice device;
  const AidSettings settings;
  ToneBoard board(settings);
  board.connect(&device);
  const Tone tone{500, -600, -2000};
  board.play(ToneSlot::kTurn, {{0, 100, tone}, {150, 100, tone}}, 1000);
  EXPECT_THAT(device.taken(), ElementsAre("codriver turn volume -600", "codriver turn pan -2000",
                                          "codriver turn frequency 24000", "codriver turn loop"));
  EXPECT_EQ(board.untilDue(1000, 99), 99);
  EXPECT_EQ(board.untilDue(1040, 99), 60);
  board.moveTo(1099);
  EXPECT_THAT(device.taken(), IsEmpty());
  board.moveTo(1100);
  EXPECT_THAT(device.taken(), ElementsAre("codriver turn stop"));
  EXPECT_EQ(board.untilDue(1100, 99), 50);
  board.moveTo(1150);
  EXPECT_EQ(device.taken().back(), "codriver turn loop");
  board.moveTo(1250);
  EXPECT_THAT(device.taken(), ElementsAre("codriver turn stop"));
  EXPECT_EQ(board.untilDue(1250, 99), 99);
}

TEST(ToneBoard, PassesWhatIsLongOver) {
  NotedDevice device;
  const AidSettings settings;
  ToneBoard board(settings);
  board.connect(&device);
  board.play(ToneSlot::kTurn, {{0, 100, {}}, {150, 100, {}}}, 1000);
  board.moveTo(5000);
  EXPECT_EQ(device.taken().back(), "codriver turn stop");
  EXPECT_EQ(board.untilDue(5000, 99), 99);
}

TEST(ToneBoard, HoldsAToneAndTellsOnlyWhatChanges) {
  NotedDevice device;
  const AidSettings settings;
  ToneBoard board(settings);
  board.connect(&device);
  board.hold(ToneSlot::kSlider, Tone{400, -1000, 0});
  device.taken();
  board.hold(ToneSlot::kSlider, Tone{400, -900, 0});
  EXPECT_THAT(device.taken(), ElementsAre("codriver slider volume -900"));
  board.hold(ToneSlot::kSlider, Tone{400, -900, 0});
  EXPECT_THAT(device.taken(), IsEmpty());
  board.hold(ToneSlot::kSlider, std::nullopt);
  EXPECT_THAT(device.taken(), ElementsAre("codriver slider stop"));
}

TEST(ToneBoard, KeepsToItsTimeWhereTheClockWraps) {
  NotedDevice device;
  const AidSettings settings;
  ToneBoard board(settings);
  board.connect(&device);
  board.play(ToneSlot::kTurn, {{0, 100, {}}}, 0xFFFFFFF0U);
  device.taken();
  board.moveTo(0xFFFFFFFFU);
  EXPECT_THAT(device.taken(), IsEmpty());
  board.moveTo(84);
  EXPECT_THAT(device.taken(), ElementsAre("codriver turn stop"));
}

TEST(ToneBoard, BeatsOnTheRightForOneEar) {
  AidSettings settings;
  settings.hearsInOne = 1;
  settings.codriverLevel = -300;
  NotedDevice device;
  ToneBoard board(settings);
  board.connect(&device);
  board.moveTo(1000);
  board.hold(ToneSlot::kSlider, Tone{400, -1000, -2500});
  EXPECT_THAT(device.taken(), ElementsAre("codriver slider volume -1300", "codriver slider pan 0",
                                          "codriver slider frequency 19200", "codriver slider loop"));
  board.moveTo(1099);
  EXPECT_THAT(device.taken(), IsEmpty());
  board.hold(ToneSlot::kSlider, Tone{400, -1000, 2500});
  board.moveTo(1144);
  EXPECT_EQ(device.taken().back(), "codriver slider stop");
}

TEST(ForOneEar, SidesAreToldApartByRhythmAndPitch) {
  const auto figure = [](int pan) {
    return std::vector<Beep>{{0, 100, {500, 0, pan}}, {160, 100, {500, 0, pan}}};
  };
  EXPECT_GT(forOneEar(figure(3000)).back().tone.pitch, 500);
  EXPECT_LT(forOneEar(figure(-3000)).back().tone.pitch, 500);
  EXPECT_EQ(forOneEar(figure(0)).back().tone.pitch, 500);
  EXPECT_EQ(forOneEar({{0, 140, {500, 0, 3000}}}).size(), 2U);
  EXPECT_EQ(forOneEar({{0, 140, {500, 0, -3000}}}).size(), 1U);
  EXPECT_TRUE(forOneEar({}).empty());
}

TEST(ToneBoard, IsSilentWithoutADeviceOrWhereItFails) {
  const AidSettings settings;
  ToneBoard board(settings);
  board.play(ToneSlot::kTurn, {{0, 100, {}}}, 0);
  NotedDevice device;
  device.fails = true;
  board.connect(&device);
  EXPECT_NO_THROW(board.hold(ToneSlot::kSlider, Tone{}));
  EXPECT_NO_THROW(board.moveTo(1));
}

}  // namespace
}  // namespace vorn
