#include "platform/desktop/buffer_growth.h"

#include <gtest/gtest.h>

#include <vector>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using std::chrono::microseconds;

constexpr int kRate = 48000;

/// A device with a queue of 1536 frames that asks for 256 whenever there is room, and is served.
class HoleFinderTest : public testing::Test {
 protected:
  /// Plays `seconds` at a clock that is so much faster than ours. Returns the holes found, in ms.
  std::vector<double> play(double seconds, double fasterClock = 0) {
    std::vector<double> holes;
    const double end = now + seconds;
    while (now < end) {
      queued -= kAsk;
      now += kAsk / (kRate * (1 + fasterClock));
      while (queued <= kQueue - kAsk) {
        queued += kAsk;
        if (const double hole = finder.handedOver(HoleFinder::Time() + inMicroseconds(now), kAsk); hole > 0) {
          holes.push_back(hole);
        }
      }
    }
    return holes;
  }
  /// Nobody serves the device, which plays what it has.
  void stall(double seconds) {
    now += seconds;
    queued -= static_cast<int>(seconds * kRate);
    if (queued < 0) queued = 0;
  }
  static microseconds inMicroseconds(double seconds) {
    return microseconds(static_cast<std::int64_t>(seconds * 1e6));
  }

  static constexpr int kQueue = 1536, kAsk = 256;
  HoleFinder finder{kRate};
  double now = 100;
  int queued = 0;
};

TEST_F(HoleFinderTest, SteadyRequestsAreNone) {
  EXPECT_EQ(play(60).size(), 0U);
}

TEST_F(HoleFinderTest, NeitherIsAClockThatGoesAnotherWay) {
  EXPECT_EQ(play(60, 300e-6).size(), 0U);
  EXPECT_EQ(play(60, -300e-6).size(), 0U);
}

TEST_F(HoleFinderTest, NeitherIsALateServiceThatIsMadeUpFor) {
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(play(0.3).size(), 0U);
    stall(0.020);  // the queue lasts for 27 ms at the least
  }
}

TEST_F(HoleFinderTest, WhatTheDevicePlayedAsSilenceIsAHole) {
  play(1);
  for (const double missed : {0.011, 0.025, 0.150}) {
    stall(static_cast<double>(kQueue) / kRate + missed);
    const auto holes = play(1);
    ASSERT_EQ(holes.size(), 1U) << missed;
    // The stall began somewhere between two requests.
    EXPECT_NEAR(holes[0], 1000 * missed, 1000.0 * kAsk / kRate + 1);
  }
}

TEST_F(HoleFinderTest, ShortOnesAddUp) {
  std::size_t holes = 0;
  play(1);
  for (int i = 0; i < 20; ++i) {
    stall(static_cast<double>(kQueue) / kRate + 0.003);
    holes += play(0.4).size();
  }
  EXPECT_GE(holes, 4U);
}

TEST_F(HoleFinderTest, IsFoundWithinAFifthOfASecond) {
  play(1);
  stall(0.060);
  EXPECT_EQ(play(0.2).size(), 1U);
}

TEST_F(HoleFinderTest, ARestartIsNone) {
  play(1);
  stall(0.5);
  finder.restart();
  EXPECT_EQ(play(1).size(), 0U);
}

class BufferGrowthTest : public testing::Test {
 protected:
  void hole(std::chrono::milliseconds at, double milliseconds = 5) {
    buffer.hole(HoleFinder::Time() + at, milliseconds);
  }
  BufferGrowth buffer{512, true};
};

TEST_F(BufferGrowthTest, OneHoleIsChance) {
  hole(1s);
  EXPECT_EQ(buffer.frames(), 512);
}

TEST_F(BufferGrowthTest, TwoWithinTenSecondsAreNot) {
  hole(1s);
  hole(10'900ms);
  EXPECT_EQ(buffer.frames(), 1024);
}

TEST_F(BufferGrowthTest, TwoFarApartAre) {
  for (int i = 0; i < 100; ++i) hole(i * 11s);
  EXPECT_EQ(buffer.frames(), 512);
}

TEST_F(BufferGrowthTest, EachSizeHasTwoOfItsOwnAndTheLargestIsTheLast) {
  std::vector<int> sizes;
  for (int i = 0; i < 10; ++i) {
    hole(i * 1s);
    sizes.push_back(buffer.frames());
  }
  EXPECT_EQ(sizes, (std::vector<int>{512, 1024, 1024, 2048, 2048, 4096, 4096, 4096, 4096, 4096}));
}

TEST_F(BufferGrowthTest, AMachineThatSleptHasNoHoles) {
  hole(1s, 3000);
  hole(2s, 260);
  EXPECT_EQ(buffer.frames(), 512);
}

TEST_F(BufferGrowthTest, ASizeThatWasAskedForStays) {
  buffer = BufferGrowth(300, false);
  for (int i = 0; i < 10; ++i) hole(i * 1s);
  EXPECT_EQ(buffer.frames(), 300);
}

TEST(BufferText, KeepsEachSize) {
  for (const int frames : {512, 1024, 2048, 4096}) {
    EXPECT_EQ(bufferFromText(bufferAsText(frames)), frames);
  }
  EXPECT_EQ(bufferAsText(1024), "1024\r\n");
}

TEST(BufferText, IsForgottenWhereItIsDamaged) {
  for (const char* text :
       {"", "\r\n", "1024", "1024\r\n1024\r\n", "8192\r\n", "256\r\n", "-1024\r\n", "1000\r\n", "abc"}) {
    EXPECT_EQ(bufferFromText(text), 512) << text;
  }
}

}  // namespace
}  // namespace vorn
