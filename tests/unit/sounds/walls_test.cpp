// The wall ambiences are heard as two copies at once, one ahead of the other.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string_view>

#include "hearing/figures.h"
#include "spectrum.h"
#include "support_sounds.h"

namespace vorn::sounds {
namespace {

using test::Signal;

struct Wall {
  std::string_view name;
  double likenessAllowed;
  double leastMovement;
};

void PrintTo(const Wall& wall, std::ostream* out) {
  *out << wall.name;
}

class Walls : public testing::TestWithParam<Wall> {
 protected:
  Signal sound_ = test::hearSound(GetParam().name).signal();
};

constexpr std::size_t kRightCopyStarts = 44159 / 2;  // taken down to the frame

/// Likeness of the loop with itself, `lag` samples on around it.
double likeness(const Signal& loop, std::size_t lag) {
  double product = 0;
  for (std::size_t i = 0; i < loop.size(); ++i) product += loop[i] * loop[(i + lag) % loop.size()];
  return product / static_cast<double>(loop.size()) / test::meanSquare(loop);
}

TEST_P(Walls, ShareNothingBetweenTheirCopies) {
  for (std::size_t lag = kRightCopyStarts - 40; lag <= kRightCopyStarts + 40; ++lag) {
    EXPECT_LE(std::abs(likeness(sound_, lag)), GetParam().likenessAllowed) << lag;
  }
}

TEST_P(Walls, HoldNoSingleEvent) {
  const std::size_t frames = 2205;
  double loudest = 0;
  for (std::size_t at = 0; at + frames <= sound_.size(); at += frames) {
    loudest = std::max(loudest, test::meanSquare(test::stretch(sound_, at, frames)));
  }
  EXPECT_LE(test::decibels(loudest / test::meanSquare(sound_)), 4);
}

// What only rushes tires the ear. Measured: crowd 0.48, wind 0.40, forest 0.39; plain noise in the crowd's
// place had 0.38.
TEST_P(Walls, MoveMoreThanNoiseDoes) {
  EXPECT_GE(hearing::figuresOf(sound_, 22050).envelopeVariation, GetParam().leastMovement);
}

TEST_P(Walls, ReachBeyondTheRightCopy) {
  EXPECT_GT(sound_.size(), kRightCopyStarts + 1);
}

INSTANTIATE_TEST_SUITE_P(All, Walls,
                         testing::Values(Wall{"vorn16", 0.15, 0.45}, Wall{"vorn24", 0.15, 0.37},
                                         Wall{"vorn23", 0.2, 0.37}),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace vorn::sounds
