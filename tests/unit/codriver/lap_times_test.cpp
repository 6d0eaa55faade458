#include "codriver/lap_times.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "unit/codriver/laps.h"

namespace vorn {
namespace {

using testing::DoubleNear;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

TEST(Sectors, EndAtTheJointsThatAreNearestToTheThirds) {
  EXPECT_THAT(sectorEnds(kKirtland), ElementsAre(16000, 32000, 44000));
  EXPECT_THAT(sectorEnds(kMaple), ElementsAre(30000, 78000, 100800));
}

TEST(Sectors, GrowAlongTheLapOnEveryTrack) {
  for (const Track* track : allTracks()) {
    const auto ends = sectorEnds(*track);
    EXPECT_LT(ends[0], ends[1]) << track->name;
    EXPECT_LT(ends[1], ends[2]) << track->name;
    EXPECT_EQ(ends[2], lapLength(*track)) << track->name;
  }
}

TEST(Laps, EndAtTheLineAndNotAtTheTick) {
  LapWatch watch(kKirtland);
  SteadyCar car(kKirtland, 205);  // the speed at which the game's rule for the line is exact
  const GhostLap first = nextLap(watch, car);
  EXPECT_THAT(first.ticks, DoubleNear(44000.0 / 205, 1e-9));
  EXPECT_THAT(nextLap(watch, car).ticks, DoubleNear(44000.0 / 205, 1e-9));
}

TEST(Laps, AddUpToTheRace) {
  LapWatch watch(kMaple);
  SteadyCar car(kMaple, 171.3);
  double sum = 0;
  for (int lap = 0; lap < 3; ++lap) sum += nextLap(watch, car).ticks;
  const double overshoot = car.now().lapPosition - kMaple.segments.back().length;
  EXPECT_THAT(sum, DoubleNear(car.now().raceTicks - overshoot / 205, 1e-9));
}

TEST(Laps, AreOfTheDeviceTheyEndWithAndTheFirstIsFromAStandstill) {
  LapWatch watch(kKirtland);
  SteadyCar car(kKirtland, 150);
  EXPECT_EQ(nextLap(watch, car, true).kind, (LapKind{.isByKeys = true, .isFlying = false}));
  EXPECT_EQ(nextLap(watch, car, false).kind, (LapKind{.isByKeys = false, .isFlying = true}));
}

TEST(Laps, HoldAPlaceATickOnTheWholeLap) {
  LapWatch watch(kKirtland);
  SteadyCar car(kKirtland, 200, 33);
  const GhostLap first = nextLap(watch, car);
  ASSERT_THAT(first.places, SizeIs(220));
  EXPECT_EQ(first.places.front(), (GhostPlace{1, 200, 33}));
  EXPECT_EQ(first.places[99], (GhostPlace{100, 20000, 33})) << "in the second segment";
  EXPECT_EQ(first.places.back().distance, 44000);
}

TEST(Laps, TellEachJointThatIsCrossed) {
  LapWatch watch(kKirtland);
  SteadyCar car(kKirtland, 1000);
  std::vector<double> joints;
  for (int tick = 0; tick < 44; ++tick) {
    const LapStep step = watch.watch(car.next(), false);
    if (step.endsSegment) joints.push_back(step.distance);
  }
  EXPECT_THAT(joints, ElementsAre(10000, 16000, 22000, 32000, 38000, 44000));
}

TEST(Laps, StandStillOnPitRoadWhileTheirTimeRunsOn) {
  LapWatch watch(kKirtland);
  SteadyCar car(kKirtland, 1000);
  watch.watch(car.next(), false);
  TickReport onPitRoad = car.now();
  onPitRoad.segment = 0;
  onPitRoad.lapPosition = 4400;
  onPitRoad.raceTicks += 20;
  const LapStep step = watch.watch(onPitRoad, false);
  EXPECT_EQ(step.distance, 1000);
  EXPECT_EQ(step.ticks, 21);
  EXPECT_FALSE(step.endsSegment);
}

TEST(Sectors, TakeTheirShareOfALap) {
  LapWatch watch(kKirtland);
  SteadyCar car(kKirtland, 205);
  EXPECT_THAT(sectorTicks(nextLap(watch, car), kKirtland),
              ElementsAre(DoubleNear(16000.0 / 205, 1e-9), DoubleNear(16000.0 / 205, 1e-9),
                          DoubleNear(12000.0 / 205, 1e-9)));
}

TEST(TimesInWords, HaveOneDecimal) {
  EXPECT_EQ(tenthsText(49.24), "49 point 2");
  EXPECT_EQ(tenthsText(49.96), "50 point 0");
  EXPECT_EQ(tenthsText(0), "0 point 0");
  EXPECT_EQ(lapTimeText(98), "10 point 0 seconds");
  EXPECT_EQ(lapTimeText(588), "1 minute 0 point 0 seconds");
  EXPECT_EQ(lapTimeText(587.9), "1 minute 0 point 0 seconds") << "and not 60 point 0";
  EXPECT_EQ(lapTimeText(1225), "2 minutes 5 point 0 seconds");
}

GhostLap lapOf(double ticks, bool isFlying = true) {
  return {{.isByKeys = false, .isFlying = isFlying}, ticks, {{1, 0, 50}, {ticks, 44000, 50}}};
}

TEST(LapSentences, NameTheLapAndItsGapToTheBestOfItsKind) {
  const GhostLap best = lapOf(490);
  EXPECT_EQ(lapSentence(lapOf(490), nullptr), " Lap 50 point 0 seconds. ");
  EXPECT_EQ(lapSentence(lapOf(494.9), &best), " Lap 50 point 5 seconds, 0 point 5 behind. ");
  EXPECT_EQ(lapSentence(lapOf(480.2), &best), " Lap 49 point 0 seconds, the best, 1 point 0 ahead. ");
  EXPECT_EQ(lapSentence(lapOf(490), &best), " Lap 50 point 0 seconds, level. ");
}

TEST(LapReports, TellOfTheLastLapAndTheBestOnes) {
  LapBook book;
  EXPECT_EQ(lapReport(book, {}, kKirtland), " No lap yet. ");
  book.enter(lapOf(490), nullptr);
  EXPECT_EQ(lapReport(book, {}, kKirtland),
            " Last lap 50 point 0 seconds. Best of this session 50 point 0 seconds. ");
  EXPECT_EQ(lapReport(book, {lapOf(441), lapOf(480.2, false)}, kKirtland),
            " Last lap 50 point 0 seconds. Best of this session 50 point 0 seconds."
            " Best of all time 45 point 0 seconds. ");
}

TEST(LapReports, TellTheGapOfEachSectorToTheBestBefore) {
  LapBook book;
  const GhostLap best = lapOf(490);
  book.enter(lapOf(441), nullptr);
  book.enter(lapOf(539), &best);
  EXPECT_EQ(lapReport(book, {}, kKirtland),
            " Last lap 55 point 0 seconds. Best of this session 45 point 0 seconds."
            " Sector 1, 1 point 8 behind. Sector 2, 1 point 8 behind. Sector 3, 1 point 4 behind. ");
}

TEST(LapReports, LeaveOutTheOtherDevice) {
  LapBook book;
  GhostLap byKeys = lapOf(441);
  byKeys.kind.isByKeys = true;
  book.enter(lapOf(490), nullptr);
  EXPECT_THAT(lapReport(book, {byKeys}, kKirtland), testing::Not(testing::HasSubstr("all time")));
}

}  // namespace
}  // namespace vorn
