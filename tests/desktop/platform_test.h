/// For tests of the desktop platform without a game.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <sstream>

#include "platform/desktop/desktop_platform.h"
#include "support/temporary_folder.h"

namespace vorn {

/// A platform, made by each test as it needs it, at which the test stands in the game's place: it yields.
class PlatformTest : public testing::Test {
 protected:
  /// Yields until `condition` holds; false where it does not within `limit`.
  bool yieldUntil(const std::function<bool()>& condition,
                  std::chrono::milliseconds limit = std::chrono::seconds(60)) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
      if (std::chrono::steady_clock::now() > end) return false;
      platform->yield(5);
    }
    return true;
  }
  void yieldFor(std::chrono::milliseconds time) {
    yieldUntil([] { return false; }, time);
  }

  TemporaryFolder folder;
  std::ostringstream captions;
  std::unique_ptr<Platform> platform;
};

}  // namespace vorn
