#include "clock/waits.h"

#include <gtest/gtest.h>

#include "platform/common/forwarding_platform.h"
#include "support/game_rig.h"

namespace vorn {
namespace {

HeadlessOptions withTickCount(std::int32_t tickCount) {
  HeadlessOptions options = GameRig::silentOptions();
  options.tickCount = tickCount;
  return options;
}

HeadlessOptions withTimeOfDay(std::chrono::seconds timeOfDay) {
  HeadlessOptions options = GameRig::silentOptions();
  options.timeOfDay = timeOfDay;
  return options;
}

std::int64_t dykeTakes(GameRig& rig, double seconds) {
  return rig.timed([seconds](GameState& g) { dyke(g, seconds); });
}

std::int64_t dyTakes(GameRig& rig, double seconds) {
  return rig.timed([seconds](GameState& g) { dy(g, seconds); });
}

TEST(Dyke, EndsOnceTheTickCountIsPastItsDeadline) {
  GameRig rig;
  EXPECT_EQ(dykeTakes(rig, 0.2), 201);
  EXPECT_EQ(dykeTakes(rig, 0.02), 21);
  EXPECT_EQ(dykeTakes(rig, 0.18), 181);
  EXPECT_EQ(dykeTakes(rig, 1), 1001);
}

/// Writes down how long each yield may rest.
class WatchedPlatform : public ForwardingPlatform {
 public:
  using ForwardingPlatform::ForwardingPlatform;
  std::vector<int> rests;

 private:
  void doYield(int atMostMs) override {
    rests.push_back(atMostMs);
    inner().yield(atMostMs);
  }
};

std::vector<int> fromDownToOne(int first) {
  std::vector<int> numbers;
  for (int number = first; number >= 1; --number) numbers.push_back(number);
  return numbers;
}

TEST(Dyke, LetsTheMachineRestForWhatIsLeftAndNoLonger) {
  GameRig rig;
  WatchedPlatform watched(rig.g.platform);
  GameState g(watched);
  dyke(g, 0.02);
  EXPECT_EQ(watched.rests, fromDownToOne(21));
}

TEST(Dyz, LetsTheMachineRestForWhatIsLeftAndNoLonger) {
  GameRig rig;
  WatchedPlatform watched(rig.g.platform);
  GameState g(watched);
  g.lastTickCount = watched.tickCount();
  dyz(g);
  EXPECT_EQ(watched.rests, fromDownToOne(99));
  watched.rests.clear();
  g.lastTickCount -= 500;  // a tick that is late
  dyz(g);
  EXPECT_EQ(watched.rests, std::vector<int>{0});
}

TEST(Dyke, YieldsAtLeastOnce) {
  GameRig rig;
  EXPECT_EQ(dykeTakes(rig, 0), 1);
}

TEST(Dyke, RoundsItsMillisecondsHalvesToEven) {
  GameRig rig;
  EXPECT_EQ(dykeTakes(rig, 0.0005), 1);
  EXPECT_EQ(dykeTakes(rig, 0.0015), 3);
  EXPECT_EQ(dykeTakes(rig, 0.0025), 3);
}

TEST(Dyke, LeavesItsDeadlineInTheState) {
  GameRig rig(Wheel::kKeys, withTickCount(5000));
  dyke(rig.g, 0.3);
  EXPECT_EQ(rig.g.waitUntilTick, 5300);
}

TEST(Dyke, LastsTheSameWhereTheCounterWraps) {
  GameRig rig(Wheel::kKeys, withTickCount(2147483600));
  EXPECT_EQ(dykeTakes(rig, 0.2), 201);
  EXPECT_EQ(rig.g.waitUntilTick, -2147483648 + (2147483600 + 200LL - 2147483648));
}

TEST(Dyke, LastsTheSameWhereTheCounterPassesZero) {
  GameRig rig(Wheel::kKeys, withTickCount(-5));
  EXPECT_EQ(dykeTakes(rig, 0.2), 201);
  EXPECT_EQ(rig.g.waitUntilTick, 195);
}

TEST(Dyke, LetsKeysArriveMeanwhile) {
  GameRig rig;
  rig.plan({"wait 50", "press A"});
  dyke(rig.g, 0.1);
  EXPECT_EQ(rig.g.lastKeyCode, "65");
}

TEST(Dy, LastsAsLongByTheClockOfTheDay) {
  GameRig rig(Wheel::kKeys, withTimeOfDay(std::chrono::hours(12)));
  const std::int64_t taken = dyTakes(rig, 0.2);
  EXPECT_GE(taken, 200);
  EXPECT_LE(taken, 201);
}

TEST(Dy, EndsAcrossMidnightAtTheRightMoment) {
  GameRig rig(Wheel::kKeys, withTimeOfDay(std::chrono::seconds(86399)));
  rig.plan({"wait 899"});
  for (int i = 0; i < 900; ++i) rig.g.platform.yield();
  const std::int64_t taken = dyTakes(rig, 0.2);
  EXPECT_GE(taken, 200);
  EXPECT_LE(taken, 201);
  EXPECT_LT(rig.g.platform.secondsSinceMidnight(), 1);
}

TEST(Dyz, EndsNinetyNineMillisecondsAfterTheLastTick) {
  GameRig rig;
  rig.g.lastTickCount = rig.g.platform.tickCount();
  EXPECT_EQ(rig.timed(dyz), 99);
  EXPECT_EQ(rig.timed(dyz), 99);
}

TEST(Dyz, CountsWhatTheTickHasAlreadyTaken) {
  GameRig rig;
  rig.g.lastTickCount = rig.g.platform.tickCount();
  for (int i = 0; i < 60; ++i) rig.g.platform.yield();
  EXPECT_EQ(rig.timed(dyz), 39);
}

TEST(Dyz, YieldsOnceInATickThatIsLate) {
  GameRig rig;
  rig.g.lastTickCount = rig.g.platform.tickCount();
  for (int i = 0; i < 500; ++i) rig.g.platform.yield();
  EXPECT_EQ(rig.timed(dyz), 1);
  EXPECT_EQ(rig.g.lastTickCount, rig.g.platform.tickCount());
}

TEST(Dyz, KeepsItsPaceWhereTheCounterWraps) {
  GameRig rig(Wheel::kKeys, withTickCount(2147483600));
  rig.g.lastTickCount = rig.g.platform.tickCount();
  EXPECT_EQ(rig.timed(dyz), 99);
  EXPECT_LT(rig.g.lastTickCount, 0);
  EXPECT_EQ(rig.timed(dyz), 99);
}

TEST(MillisecondsSince, IsRightAcrossTheWrap) {
  GameRig rig(Wheel::kKeys, withTickCount(-2147483648 + 10));
  EXPECT_EQ(millisecondsSince(rig.g, 2147483640), 18U);
}

}  // namespace
}  // namespace vorn
