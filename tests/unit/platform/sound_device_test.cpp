#include "platform/sound_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/errors.h"

namespace vorn {
namespace {

using testing::ElementsAre;

/// A recording of a hundred bytes that notes what reaches it.
class NotingBuffer : public SoundBuffer {
 public:
  std::vector<std::string> noted;

 private:
  void note(const std::string& call, int value) { noted.push_back(call + " " + std::to_string(value)); }
  void doPlay(bool looping) override { note("play", looping ? 1 : 0); }
  void doStop() override { noted.emplace_back("stop"); }
  void doSetVolume(int volume) override { note("volume", volume); }
  void doSetPan(int pan) override { note("pan", pan); }
  void doSetFrequency(int hertz) override { note("frequency", hertz); }
  void doSetCurrentPosition(int byte) override { note("position", byte); }
  int doGetStatus() override { return 0; }
  int doGetFrequency() override { return 22050; }
  int doDataBytes() const override { return 100; }
};

std::string failureOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const PlatformError& error) {
    return error.what();
  }
  return "none";
}

TEST(SoundBuffer, TakesItsRangesToTheirEnds) {
  NotingBuffer buffer;
  buffer.Play(0);
  buffer.Play(1);
  buffer.SetVolume(-10000);
  buffer.SetVolume(0);
  buffer.SetPan(-10000);
  buffer.SetPan(10000);
  buffer.SetFrequency(100);
  buffer.SetFrequency(100000);
  buffer.SetCurrentPosition(0);
  buffer.SetCurrentPosition(99);
  EXPECT_THAT(buffer.noted,
              ElementsAre("play 0", "play 1", "volume -10000", "volume 0", "pan -10000", "pan 10000",
                          "frequency 100", "frequency 100000", "position 0", "position 99"));
}

TEST(SoundBuffer, SaysWhichCallWentBeyondWhichRange) {
  NotingBuffer buffer;
  EXPECT_EQ(failureOf([&] { buffer.Play(-1); }), "Play(-1): out of range 0 to 1");
  EXPECT_EQ(failureOf([&] { buffer.Play(2); }), "Play(2): out of range 0 to 1");
  EXPECT_EQ(failureOf([&] { buffer.SetVolume(-10001); }), "SetVolume(-10001): out of range -10000 to 0");
  EXPECT_EQ(failureOf([&] { buffer.SetVolume(1); }), "SetVolume(1): out of range -10000 to 0");
  EXPECT_EQ(failureOf([&] { buffer.SetPan(-10001); }), "SetPan(-10001): out of range -10000 to 10000");
  EXPECT_EQ(failureOf([&] { buffer.SetPan(10001); }), "SetPan(10001): out of range -10000 to 10000");
  EXPECT_EQ(failureOf([&] { buffer.SetFrequency(99); }), "SetFrequency(99): out of range 100 to 100000");
  EXPECT_EQ(failureOf([&] { buffer.SetFrequency(100001); }),
            "SetFrequency(100001): out of range 100 to 100000");
  EXPECT_EQ(failureOf([&] { buffer.SetCurrentPosition(-1); }),
            "SetCurrentPosition(-1): out of range 0 to 99");
  EXPECT_EQ(failureOf([&] { buffer.SetCurrentPosition(100); }),
            "SetCurrentPosition(100): out of range 0 to 99");
  EXPECT_THAT(buffer.noted, ElementsAre()) << "nothing of it reaches the backend";
}

}  // namespace
}  // namespace vorn
