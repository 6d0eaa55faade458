#include "speech/losses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/game_rig.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void fail() {
  throw PlatformError("write", "vorn1log.txt", "the disk is full");
}

TEST(Losses, AreNotThereWhereEverythingIsKept) {
  GameRig rig;
  EXPECT_TRUE(keep(rig.g, Kept::kLog, [] {}));
  EXPECT_THAT(rig.spokenIn([](GameState& g) { sayLosses(g); }), IsEmpty());
}

TEST(Losses, AreToldInOneOrderWhateverWasLostFirst) {
  GameRig rig;
  for (const Kept kind : {Kept::kSettings, Kept::kRecord, Kept::kLog}) EXPECT_FALSE(keep(rig.g, kind, fail));
  EXPECT_THAT(rig.spokenIn([](GameState& g) { sayLosses(g); }),
              ElementsAre("queue  Sorry, but the log could not be saved. ",
                          "queue  Sorry, but the record could not be saved. ",
                          "queue  Sorry, but the settings could not be saved. "));
}

TEST(Losses, AreToldOnceARunForEachKind) {
  GameRig rig;
  keep(rig.g, Kept::kLog, fail);
  keep(rig.g, Kept::kLog, fail);
  EXPECT_THAT(rig.spokenIn([](GameState& g) { sayLosses(g); }), testing::SizeIs(1));
  keep(rig.g, Kept::kLog, fail);
  keep(rig.g, Kept::kSettings, fail);
  EXPECT_THAT(rig.spokenIn([](GameState& g) { sayLosses(g); }),
              ElementsAre("queue  Sorry, but the settings could not be saved. "));
}

TEST(Losses, LetOtherErrorsThrough) {
  GameRig rig;
  EXPECT_THROW(keep(rig.g, Kept::kLog, [] { throw WindowClosed(); }), WindowClosed);
}

}  // namespace
}  // namespace vorn
