#include "tracks/runner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tracks/catalogue.h"
#include "unit/pit/rig.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

/// A car that rolls in neutral at the speed it is given and keeps to its place
/// across the track, unless a test says otherwise.
class Runner : public testing::Test {
 protected:
  Rig rig;
  GameState& g = rig.g;
  double speed = 200;
  double place = 50;

  Runner() {
    g.gear = 0;
    g.speed = speed;
    g.lapsToRun = 1;
    rig.platform.milliseconds["vorn1t73"] = 8297;  // the pit box voice
    rig.platform.onTick = [this] { hold(); };
  }

  void hold() {
    g.speed = speed;
    g.lateralPosition = place;
  }

  /// Ticks driven in each segment, in the order in which they came.
  std::vector<std::pair<int, int>> ticksBySegment() const {
    std::vector<std::pair<int, int>> runs;
    for (const TickReport& tick : rig.platform.ticks) {
      if (runs.empty() || runs.back().first != tick.segment) runs.emplace_back(tick.segment, 0);
      ++runs.back().second;
    }
    return runs;
  }

  int marks() const { return static_cast<int>(rig.platform.logOf("markBuffer Play 0").size()); }
};

TEST_F(Runner, CarriesTheOvershootIntoTheNextSegment) {
  speed = g.speed = 70;  // 30000 / 70 = 428.6: the segment ends at 30030
  ASSERT_TRUE(driveLaps(g, kMaple));
  const auto& ticks = rig.platform.ticks;
  EXPECT_EQ(ticks[428].segment, 1);
  EXPECT_DOUBLE_EQ(ticks[428].lapPosition, 30030);
  EXPECT_EQ(ticks[429].segment, 2);
  EXPECT_DOUBLE_EQ(ticks[429].lapPosition, 100);
}

TEST_F(Runner, CarriesTheOvershootOverTheLine) {
  speed = g.speed = 70;
  g.lapsToRun = 2;
  ASSERT_TRUE(driveLaps(g, kKirtland));  // 44000 / 70 = 628.6: the line is crossed by 30
  const auto& ticks = rig.platform.ticks;
  EXPECT_EQ(ticks[628].lapsCompleted, 0);
  EXPECT_EQ(ticks[629].lapsCompleted, 1);
  EXPECT_DOUBLE_EQ(ticks[629].lapPosition, 30 + 70);
}

TEST_F(Runner, DrivesEveryLapInTheOrderOfItsSegments) {
  g.lapsToRun = 2;
  ASSERT_TRUE(driveLaps(g, kMaple));
  std::vector<int> order;
  for (const auto& [segment, ticks] : ticksBySegment()) order.push_back(segment);
  EXPECT_THAT(order, ElementsAre(1, 2, 3, 4, 5, 6, 7, 1, 2, 3, 4, 5, 6, 7));
  EXPECT_EQ(g.lapsCompleted, 2);
  EXPECT_EQ(rig.platform.ticks.size(), 2 * 100800u / 200);
}

TEST_F(Runner, StartsEachCueAndStopsItWithAMark) {
  ASSERT_TRUE(driveLaps(g, kMaple));
  EXPECT_THAT(
      rig.platform.logOf("warnBuffer create"),
      ElementsAre("warnBuffer create vorn1t1", "warnBuffer create vorn1t2", "warnBuffer create vorn1t3",
                  "warnBuffer create vorn1t4", "warnBuffer create vorn1t5", "warnBuffer create vorn1t10",
                  "warnBuffer create vorn1t6"));
  EXPECT_EQ(marks(), 6);  // none at the finish
  EXPECT_EQ(rig.platform.logOf("warnBuffer Stop").size(), 6u);
  EXPECT_EQ(rig.platform.sounding().count("warnBuffer looping"), 1u);
}

TEST_F(Runner, MarksTheLineBetweenLaps) {
  g.lapsToRun = 3;
  ASSERT_TRUE(driveLaps(g, kMaple));
  EXPECT_EQ(marks(), 3 * 6 + 2);
}

TEST_F(Runner, BeginsTheLightPolesAnewWithEachLap) {
  g.lapsToRun = 2;
  ASSERT_TRUE(driveLaps(g, kPainsville));  // 94250: its 31 poles leave 1250 over
  for (const TickReport& tick : rig.platform.ticks) {
    if (tick.lapsCompleted != 1) continue;
    EXPECT_DOUBLE_EQ(tick.poleDistance, 200);
    break;
  }
}

TEST_F(Runner, FractionalLapsRunToTheNextWholeOne) {
  g.lapsToRun = 1.5;
  ASSERT_TRUE(driveLaps(g, kKirtland));
  EXPECT_EQ(g.lapsCompleted, 2);
}

TEST_F(Runner, NegativeLapsAreOne) {
  g.lapsToRun = -3;
  ASSERT_TRUE(driveLaps(g, kKirtland));
  EXPECT_EQ(g.lapsCompleted, 1);
}

TEST_F(Runner, EverySegmentLastsATickHoweverFarTheCarHasCome) {
  rig.platform.onTick = [&] {
    hold();
    g.lapPosition += 25000;  // more than any segment is long
  };
  ASSERT_TRUE(driveLaps(g, kMentor));
  for (const auto& [segment, ticks] : ticksBySegment()) EXPECT_EQ(ticks, 1) << segment;
  EXPECT_EQ(ticksBySegment().size(), 13u);
}

TEST_F(Runner, PushesBeforeTheTickAndNotAStandingCar) {
  const Segment turns[] = {{500, 1, 15, -2000, {Turn::kRight, 1.0, 100}}};
  const Track track{"", "", 1, turns};
  std::vector<double> places;
  rig.platform.onTick = [&] { places.push_back(g.lateralPosition); };
  g.speed = 250;
  ASSERT_TRUE(driveLaps(g, track));
  EXPECT_THAT(places, ElementsAre(46.5, 43));
  places.clear();
  g.speed = 0;
  g.lapPosition = 0;
  g.lateralPosition = 50;
  rig.platform.onTick = [&] {
    places.push_back(g.lateralPosition);
    if (places.size() == 5) g.escapePressed = 1;
  };
  EXPECT_FALSE(driveLaps(g, track));
  EXPECT_THAT(places, testing::Each(50.0));
}

TEST_F(Runner, EscapeEndsTheRaceBeforeTheNextTick) {
  rig.platform.onTick = [&] {
    hold();
    if (rig.platform.ticks.size() == 200) g.escapePressed = 1;
  };
  EXPECT_FALSE(driveLaps(g, kMaple));
  EXPECT_EQ(rig.platform.ticks.size(), 200u);
  EXPECT_EQ(g.lapsCompleted, 0);
}

TEST_F(Runner, CueRisesLinearlyAlongItsSegment) {
  ASSERT_TRUE(driveLaps(g, kMaple));
  const auto volumes = rig.platform.logOf("warnBuffer SetVolume");
  EXPECT_EQ(volumes[0], "warnBuffer SetVolume -6500");
  EXPECT_EQ(volumes[1], "warnBuffer SetVolume -3000");  // 30 for each percent still to go
  EXPECT_EQ(volumes[76], "warnBuffer SetVolume -1500");
  EXPECT_EQ(volumes[150], "warnBuffer SetVolume -20");
  EXPECT_EQ(volumes[151], "warnBuffer SetVolume -6500");  // the next cue
}

TEST_F(Runner, FirstCueOfKirtlandStopsShortOfItsFullVolume) {
  speed = g.speed = 100;
  ASSERT_TRUE(driveLaps(g, kKirtland));
  const auto volumes = rig.platform.logOf("warnBuffer SetVolume");
  EXPECT_EQ(volumes[1], "warnBuffer SetVolume -2500");
  EXPECT_EQ(volumes[100], "warnBuffer SetVolume -438");  // at 9900 of 12000
  EXPECT_EQ(volumes[101], "warnBuffer SetVolume -6500");
  EXPECT_EQ(g.lapPosition, 6000);  // the segment is over, and taken off, at 10000
  EXPECT_EQ(rig.platform.ticks.size(), 440u);
}

TEST_F(Runner, AStopOnPitRoadBeginsTheLapAnew) {
  bool isAsked = true;
  rig.platform.onTick = [&] {
    hold();
    const auto& tick = rig.platform.ticks.back();
    speed = tick.pit == 1 ? 50 : 200;
    place = tick.pit == 1 ? 10 : 50;
    if (tick.pit == 1 && g.warnDistance == 5000 && g.lapPosition > 3000) g.speed = 0;
    if (tick.pit == 1) isAsked = false;
    g.btnPitRoad = isAsked && tick.segment == 1 && g.lapPosition >= 2000 ? 1 : 0;
  };
  g.lapsToRun = 1;
  g.fuel = 3;
  ASSERT_TRUE(driveLaps(g, kMaple));
  std::vector<int> order;
  for (const auto& [segment, ticks] : ticksBySegment()) order.push_back(segment);
  EXPECT_THAT(order, ElementsAre(1, 0, 1, 2, 3, 4, 5, 6, 7));
  EXPECT_EQ(g.lapsCompleted, 1);  // the stop was no lap
  // The first segment's cue is started again.
  const auto cues = rig.platform.logOf("warnBuffer create");
  EXPECT_THAT(
      std::vector<std::string>(cues.begin(), cues.begin() + 5),
      ElementsAre("warnBuffer create vorn1t1", "warnBuffer create vorn1t72", "warnBuffer create vorn1t73",
                  "warnBuffer create vorn1t72", "warnBuffer create vorn1t1"));
  for (std::size_t i = 0; i + 1 < rig.platform.ticks.size(); ++i) {
    if (rig.platform.ticks[i].pit == 1 && rig.platform.ticks[i + 1].pit == 0) {
      EXPECT_DOUBLE_EQ(rig.platform.ticks[i + 1].lapPosition, 2000 + 555 + 50);
    }
  }
}

TEST_F(Runner, APitKeyStillHeldIsTakenAgainAfterTheStop) {
  g.btnPitRoad = 1;
  int stops = 0;
  rig.platform.onTick = [&] {
    g.speed = 50;
    g.lateralPosition = 10;
    if (g.warnDistance == 5000 && g.lapPosition > 3000) {
      g.speed = 0;
      ++stops;
    }
    if (stops == 2) g.escapePressed = 1;
  };
  EXPECT_FALSE(driveLaps(g, kMaple));
  // No tick on the track between the two, nor before the first.
  EXPECT_THAT(ticksBySegment(), ElementsAre(testing::Pair(0, testing::Gt(200))));
}

TEST_F(Runner, ALateRequestForPitRoadChangesNothing) {
  g.inputDevice = kKeyboard;
  rig.platform.keys[g.keyMapPitRoad] = 128;
  g.lapPosition = 2501;
  ASSERT_TRUE(driveLaps(g, kMaple));
  EXPECT_EQ(g.pitEntryMissed, 1);
  for (const TickReport& tick : rig.platform.ticks) EXPECT_EQ(tick.pit, 0);
  EXPECT_THAT(rig.platform.logOf("panBuffer"), IsEmpty());
}

TEST_F(Runner, PitRoadIsAskedForInTheFirstSegmentOnly) {
  rig.platform.onTick = [&] {
    hold();
    g.btnPitRoad = g.segment == 1 ? 0 : 1;
  };
  ASSERT_TRUE(driveLaps(g, kMaple));
  EXPECT_EQ(g.pitEntryMissed, 0);
  EXPECT_THAT(rig.platform.logOf("panBuffer"), IsEmpty());
}

TEST_F(Runner, EscapeOnPitRoadEndsTheRace) {
  g.btnPitRoad = 1;
  rig.platform.onTick = [&] {
    hold();
    if (rig.platform.ticks.size() == 10) g.escapePressed = 1;
  };
  EXPECT_FALSE(driveLaps(g, kMaple));
  EXPECT_EQ(rig.platform.ticks.size(), 10u);
  EXPECT_EQ(g.pit, 0);
  // The lap does not begin anew.
  EXPECT_THAT(rig.platform.logOf("warnBuffer create"),
              ElementsAre("warnBuffer create vorn1t1", "warnBuffer create vorn1t72"));
}

TEST_F(Runner, AStandingCarSlidesBackDownTheBankingForAsLongAsItStands) {
  speed = g.speed = 0;
  place = g.lateralPosition = 95;
  const Segment turn[] = {kGeneva.segments[1]};
  const Track track{"", "", 1.44, turn};
  constexpr int kTicks = 3000;
  rig.platform.onTick = [&] {
    hold();
    if (rig.platform.ticks.size() == kTicks) g.escapePressed = 1;
  };
  EXPECT_FALSE(driveLaps(g, track));  // and no call to the cue has failed
  EXPECT_NEAR(g.lapPosition, -9.5 * (kTicks + 1), 1e-6);
  // Silent, but never below silence.
  EXPECT_THAT(rig.platform.logOf("warnBuffer SetVolume"), Contains("warnBuffer SetVolume -8333"));
}

TEST_F(Runner, BankingAtTheTopHoldsACrawlingCar) {
  place = g.lateralPosition = 96;
  const Segment turn[] = {kGeneva.segments[1]};
  const Track track{"", "", 1.44, turn};
  for (const double crawl : {5.0, 9.0}) {
    speed = g.speed = crawl;
    g.lapPosition = 0;
    g.escapePressed = 0;
    rig.platform.ticks.clear();
    rig.platform.onTick = [&] {
      hold();
      if (rig.platform.ticks.size() == 100) g.escapePressed = 1;
    };
    EXPECT_FALSE(driveLaps(g, track));
    EXPECT_LT(g.lapPosition, 0) << crawl;
  }
}

TEST_F(Runner, ChestersJumpLeadsToTheLandingByWayOfTheAir) {
  speed = g.speed = 110;
  rig.platform.onTick = [&] { g.lateralPosition = place; };
  ASSERT_TRUE(driveLaps(g, kChesterland));
  const auto& ticks = rig.platform.ticks;
  std::size_t landed = 0;
  while (ticks[landed].segment != 5) ++landed;
  EXPECT_EQ(ticks[landed].speed, 35);
  // Where the run ended, and a tick in the air, and the first one on the ground.
  EXPECT_DOUBLE_EQ(ticks[landed].lapPosition, ticks[landed - 1].lapPosition + 110 - 10000 + 35);
  EXPECT_THAT(rig.platform.logOf("oneShotBuffer create"),
              ElementsAre("oneShotBuffer create vorn20", "oneShotBuffer create vorn7",
                          "oneShotBuffer create vorn21"));
}

TEST_F(Runner, ChestersWaterPutsTheCarAtTheBeginningOfTheLanding) {
  speed = g.speed = 140;
  rig.platform.onTick = [&] { g.lateralPosition = place; };
  rig.platform.milliseconds = {{"vorn2", 300}};
  rig.platform.onYield = [&] {
    const bool isInTheWater = g.warnDistance == 5000 && g.lapPosition == 3000;
    g.btnStartEngine = isInTheWater ? 1 : 0;
    g.joyGasBrake = isInTheWater ? -10000 : 0;
    g.btnUpShift = isInTheWater && g.gear == 0 && g.engineRpm == 100 ? 1 : 0;
  };
  g.gear = 3;
  g.topGearUnlimited = 0;
  g.joyGasBrake = 0;
  rig.platform.onTick = [&] {
    g.lateralPosition = place;
    if (g.segment < 5) {
      g.speed = 140;
    } else {
      g.escapePressed = 1;
    }
  };
  EXPECT_FALSE(driveLaps(g, kChesterland));
  const TickReport& last = rig.platform.ticks.back();
  EXPECT_EQ(last.segment, 5);
  EXPECT_EQ(last.gear, 1);
  EXPECT_DOUBLE_EQ(last.lapPosition, last.speed);
  EXPECT_GE(last.raceTicks, 289);
  const auto cues = rig.platform.logOf("warnBuffer create");
  EXPECT_THAT(std::vector<std::string>(cues.end() - 2, cues.end()),
              ElementsAre("warnBuffer create vorn1t67", "warnBuffer create vorn1t67"));
}

}  // namespace
}  // namespace vorn
