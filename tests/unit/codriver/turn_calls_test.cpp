#include "codriver/turn_calls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "race/drive_train.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

RaceState carAt(double speed, int topGearUnlimited = 0) {
  RaceState car;
  car.speed = speed;
  car.topGearUnlimited = topGearUnlimited;
  return car;
}

TEST(Turns, AreStretchesThatPushAlike) {
  const auto maple = turnsOf(kMaple);
  ASSERT_EQ(maple.size(), 3U);
  EXPECT_EQ(maple[0].first, 1U);
  EXPECT_EQ(maple[0].start, 30000);
  EXPECT_EQ(maple[0].length, 18000);  // two segments with one push
  EXPECT_EQ(maple[2].first, 6U);
  const auto painsville = turnsOf(kPainsville);
  EXPECT_EQ(painsville.size(), 4U);  // it tightens half-way
  const auto geneva = turnsOf(kGeneva);
  ASSERT_EQ(geneva.size(), 2U);
  EXPECT_EQ(geneva[1].length, 18000);
}

TEST(Turns, ThatFollowEachOtherAreCalledOneByOne) {
  EXPECT_EQ(turnsOf(kChagrin).size(), 7U);
}

TEST(Turns, OfChesterlandLieWhereTheRoadBends) {
  const auto turns = turnsOf(kChesterland);
  ASSERT_EQ(turns.size(), 6U);
  EXPECT_EQ(turns[0].turn, Turn::kLeft);
  EXPECT_EQ(turns[1].turn, Turn::kLeft);  // its cue stands on the right
  EXPECT_EQ(turns[2].turn, Turn::kNone);  // the jump
  EXPECT_EQ(turns[3].turn, Turn::kRight);
  EXPECT_LT(turnCall(turns[1], 5).front().tone.pan, 0);
}

TEST(SoonestMs, IsExactAtTheCapOfTheTopGear) {
  EXPECT_NEAR(soonestMs(carAt(228), 228 * 20.0), 20 * kTickMs, 1e-9);
  EXPECT_NEAR(soonestMs(carAt(228), 228 * 20.5), 20.5 * kTickMs, 1e-9);
}

TEST(SoonestMs, IsNoMoreThanFullGasTakes) {
  for (const int gear : {1, 2, 3, 4}) {
    for (double speed = 4; speed < 230; speed += 13) {
      RaceState car = carAt(speed);
      car.gear = gear;
      double way = 0;
      for (int tick = 1; tick <= 40; ++tick) {
        applyGas(car, 20);
        way += car.speed;
        EXPECT_LE(soonestMs(carAt(speed), way), tick * kTickMs + 1e-9) << speed << " in " << gear;
      }
    }
  }
}

TEST(SoonestMs, KnowsThatTheHillTopHasNoCap) {
  EXPECT_LT(soonestMs(carAt(228, 1), 8000), soonestMs(carAt(228), 8000));
}

TEST(SoonestMs, IsNothingWhereTheTurnIsReached) {
  EXPECT_EQ(soonestMs(carAt(100), 0), 0);
  EXPECT_TRUE(std::isinf(soonestMs(carAt(0), 1e6)));
}

TEST(CallPitch, RisesWithThePushAndCanBeReadBack) {
  int before = 0;
  for (double push = 0.3; push < 41; push *= 1.1) {
    const int pitch = pitchOfPush(push);
    EXPECT_GT(pitch, before);
    EXPECT_NEAR(pushOfPitch(pitch), push, 0.02 * push);
    before = pitch;
  }
  EXPECT_EQ(pitchOfPush(0), 200);
  EXPECT_EQ(pitchOfPush(100), 1990);
}

TEST(CallPitch, IsTheSameOnAllTracks) {
  // A turn of Ohio and one of Mentor that push alike sound alike.
  EXPECT_EQ(pushAt(kOhio.segments[3], 150), pushAt(kMentor.segments[9], 150));
}

TEST(CallLength, GrowsWithTheTurns) {
  EXPECT_EQ(toneMs(0), 60);
  EXPECT_EQ(toneMs(3000), 75);
  EXPECT_EQ(toneMs(9000), 225);
  EXPECT_EQ(toneMs(18000), 450);
  EXPECT_EQ(toneMs(30000), 450);
  EXPECT_EQ(lengthOfTone(toneMs(9000)), 9000);
}

TEST(TurnCall, IsTwoTonesOnTheSideOfTheTurn) {
  const CalledTurn turn{.first = 1, .start = 0, .length = 9000, .turn = Turn::kRight};
  const auto call = turnCall(turn, 4);
  ASSERT_EQ(call.size(), 2U);
  EXPECT_EQ(call[0].tone, call[1].tone);
  EXPECT_EQ(call[0].tone.pitch, 726);
  EXPECT_GT(call[0].tone.pan, 0);
  EXPECT_GT(call[1].startMs, call[0].lengthMs);
  EXPECT_EQ(figureMs(call), 225 + 60 + 225);
}

TEST(TurnCall, OfAJumpStandsInTheMiddle) {
  EXPECT_EQ(turnCall({.length = 10000, .turn = Turn::kNone}, 0).front().tone.pan, 0);
}

TEST(KeyLead, IsLongerTheFasterTheCar) {
  const Segment& erie2 = kErie.segments[1];
  int before = 0;
  for (const double speed : {40.0, 80.0, 120.0}) {
    const int lead = keyLead(erie2, speed, 70);
    EXPECT_GE(lead, before) << speed;
    before = lead;
  }
  EXPECT_GT(before, 0);
}

TEST(KeyLead, IsAtMostTwoPointFourSecondsAndNeverRunsIntoTheInside) {
  for (const Track* track : allTracks()) {
    for (const Segment& segment : track->segments) {
      if (segment.push.turn == Turn::kNone) continue;
      for (double place = 0; place <= 100; place += 5) {
        const int lead = keyLead(segment, 228, place);
        EXPECT_LE(lead, kLongestKeyLead);
        const double fromInside = segment.push.turn == Turn::kLeft ? place : 100 - place;
        if (fromInside < 10) {
          EXPECT_LE(lead, 5) << place;
        }
      }
    }
  }
}

TEST(KeyLead, IsNothingInATurnThatPushesNoMoreThanAFreshKeyHolds) {
  EXPECT_EQ(keyLead(kKirtland.segments[1], 60, 50), 0);
}

TEST(SteerCall, StandsOnTheSideOfTheTurn) {
  EXPECT_LT(steerCall(Turn::kLeft).front().tone.pan, 0);
  EXPECT_GT(steerCall(Turn::kRight).front().tone.pan, 0);
}

}  // namespace
}  // namespace vorn
