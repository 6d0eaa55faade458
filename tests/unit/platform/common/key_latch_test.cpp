#include "platform/common/key_latch.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

constexpr int kUp = 200, kDown = 208;

bool isDown(const KeyboardState& state, int code) {
  return state[static_cast<std::size_t>(code)] != 0;
}

KeyboardState holding(int code) {
  KeyboardState state{};
  state[static_cast<std::size_t>(code)] = KeyLatch::kKeyIsDown;
  return state;
}

TEST(KeyLatch, FindsTheKeysThatAreHeld) {
  KeyLatch taps;
  taps.wentDown(kUp);
  const KeyboardState state = taps.read(holding(kUp), 1000);
  EXPECT_TRUE(isDown(state, kUp));
  EXPECT_FALSE(isDown(state, kDown));
}

TEST(KeyLatch, FindsATapOnce) {
  KeyLatch taps;
  taps.wentDown(kUp);
  taps.wentUp(kUp, 1000);
  EXPECT_TRUE(isDown(taps.read({}, 1100), kUp));
  EXPECT_FALSE(isDown(taps.read({}, 1101), kUp));
}

TEST(KeyLatch, FindsNoTapThatWasReadWhileItWasDown) {
  KeyLatch taps;
  taps.wentDown(kUp);
  taps.read(holding(kUp), 1000);
  taps.wentUp(kUp, 1010);
  EXPECT_FALSE(isDown(taps.read({}, 1020), kUp));
}

TEST(KeyLatch, FindsNoTapWhoseBeginningWasReadBeforeItWasToldOf) {
  KeyLatch taps;
  taps.read(holding(kUp), 1000);
  taps.wentDown(kUp);
  taps.wentUp(kUp, 1100);
  EXPECT_FALSE(isDown(taps.read({}, 1110), kUp));
  taps.wentDown(kUp);
  taps.wentUp(kUp, 1200);
  EXPECT_TRUE(isDown(taps.read({}, 1210), kUp)) << "the next one is a tap like any other";
}

TEST(KeyLatch, ForgetsATapAfterAQuarterOfASecond) {
  for (const auto& [later, isFound] : {std::pair(250u, true), std::pair(251u, false)}) {
    KeyLatch taps;
    taps.wentDown(kUp);
    taps.wentUp(kUp, 1000);
    EXPECT_EQ(isDown(taps.read({}, 1000 + later), kUp), isFound) << later;
    EXPECT_FALSE(isDown(taps.read({}, 1001 + later), kUp)) << "it is not kept for later either";
  }
}

TEST(KeyLatch, CountsRightAcrossTheWrapOfItsClock) {
  KeyLatch taps;
  taps.wentDown(kUp);
  taps.wentUp(kUp, 0xFFFFFFF0u);
  EXPECT_TRUE(isDown(taps.read({}, 100), kUp));
}

TEST(KeyLatch, KeepsTapsOfSeveralKeysApart) {
  KeyLatch taps;
  taps.wentDown(kUp);
  taps.wentDown(kDown);
  taps.wentUp(kUp, 1000);
  const KeyboardState state = taps.read(holding(kDown), 1010);
  EXPECT_TRUE(isDown(state, kUp));
  EXPECT_TRUE(isDown(state, kDown));
  taps.wentUp(kDown, 1020);
  EXPECT_FALSE(isDown(taps.read({}, 1030), kDown));
}

}  // namespace
}  // namespace vorn
