#include "platform/common/watchdog.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

class WatchdogTest : public testing::Test {
 protected:
  auto look(std::uint64_t progress, std::chrono::nanoseconds later) {
    return dog.idleFor(progress, now += later);
  }

  Watchdog dog;
  Watchdog::Time now{};
};

TEST_F(WatchdogTest, CountsHowLongThereIsNoProgress) {
  for (std::uint64_t i = 0; i < 100; ++i) {
    EXPECT_EQ(look(i / 10, 100ms), (i % 10) * 100ms);
  }
}

TEST_F(WatchdogTest, DoesNotCountWhatItHasNotSeen) {
  look(5, 0ms);
  EXPECT_EQ(look(5, 1h), 100ms) << "the program was halted meanwhile";
  EXPECT_EQ(look(5, 50ms), 150ms);
  dog.rest();
  EXPECT_EQ(look(5, 50ms), 0ms);
  EXPECT_EQ(look(5, 50ms), 50ms);
}

}  // namespace
}  // namespace vorn
