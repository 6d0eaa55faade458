#include "platform/web/lateness.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(Lateness, IsNothingWhereNothingHasCome) {
  const Lateness late;
  EXPECT_EQ(late.count(), 0);
  EXPECT_EQ(late.below(0.99), 0);
}

TEST(Lateness, TellsWhatAShareStayedBelow) {
  Lateness late;
  for (int i = 0; i < 98; ++i) late.note(0.12);
  late.note(1.98);
  late.note(7.01);
  EXPECT_EQ(late.count(), 100);
  EXPECT_NEAR(late.below(0.5), 0.15, 1e-9);
  EXPECT_NEAR(late.below(0.98), 0.15, 1e-9);
  EXPECT_NEAR(late.below(0.99), 2, 1e-9);
  EXPECT_NEAR(late.below(1), 7.05, 1e-9);
}

TEST(Lateness, CountsWhatIsMuchTooLateAsTheMost) {
  Lateness late;
  late.note(-1);
  late.note(5000);
  EXPECT_NEAR(late.below(0.5), Lateness::kStepMs, 1e-9);
  EXPECT_NEAR(late.below(1), Lateness::kMostMs, 1e-9);
}

}  // namespace
}  // namespace vorn
