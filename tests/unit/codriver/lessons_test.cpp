#include "codriver/lessons.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "tracks/catalogue.h"

namespace vorn {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

enum Number { kMiddle, kMarbles, kShift, kBrake, kThreeTurns, kPitStop };

/// An attempt at a lesson on paper.
class Attempt {
 public:
  explicit Attempt(Number lesson) : judge_(allLessons()[lesson].judge()) {
    tick_.segment = 1;
    tick_.lateralPosition = 50;
    tick_.gear = 1;
  }

  /// `ticks` more of them, each of which `change` has been done to.
  Attempt& go(
      int ticks, const std::function<void(TickReport&)>& change = [](TickReport&) {}) {
    for (int i = 0; i < ticks; ++i) {
      EXPECT_EQ(verdict_.state, LessonState::kGoingOn) << "it is over: " << verdict_.words;
      ++tick_.raceTicks;
      change(tick_);
      verdict_ = judge_->after(tick_);
    }
    return *this;
  }
  LessonState state() const { return verdict_.state; }
  const std::string& words() const { return verdict_.words; }
  std::string failure() const { return state() == LessonState::kFailed ? words() : "not failed"; }

 private:
  std::unique_ptr<LessonJudge> judge_;
  TickReport tick_{};
  LessonVerdict verdict_;
};

std::function<void(TickReport&)> at(double lateral) {
  return [=](TickReport& tick) { tick.lateralPosition = lateral; };
}

std::function<void(TickReport&)> in(int segment) {
  return [=](TickReport& tick) { tick.segment = segment; };
}

TEST(Lessons, BeginOnTheFirstStraightOfTheirTrack) {
  EXPECT_THAT(allLessons(), SizeIs(6));
  for (const Lesson& lesson : allLessons()) {
    const Segment& straight = allTracks()[static_cast<std::size_t>(lesson.scene.track - 1)]->segments.front();
    EXPECT_EQ(straight.push.turn, Turn::kNone) << lesson.name;
    EXPECT_LT(lesson.scene.lapPosition, straight.length) << lesson.name;
    EXPECT_THAT(lesson.name, StartsWith(" "));
    EXPECT_THAT(lesson.task, EndsWith(". "));
  }
}

TEST(Lessons, EndBeforeWallContactsBecomeACrash) {
  Attempt attempt(kThreeTurns);
  attempt.go(10, in(1));
  for (const Number lesson : {kMiddle, kMarbles, kShift, kBrake, kPitStop}) {
    Attempt scraping(lesson);
    scraping.go(1, [](TickReport& tick) { tick.wallTicks = 5; });
    EXPECT_EQ(scraping.state(), LessonState::kFailed) << allLessons()[lesson].name;
  }
}

TEST(HearTheMiddle, IsReachedAfterThreeSecondsOfIt) {
  Attempt attempt(kMiddle);
  attempt.go(100, at(20)).go(29, at(40));
  EXPECT_EQ(attempt.state(), LessonState::kGoingOn);
  attempt.go(1, at(60));
  EXPECT_EQ(attempt.state(), LessonState::kReached);
}

TEST(HearTheMiddle, CountsFromTheBeginningWhereItIsLost) {
  Attempt attempt(kMiddle);
  attempt.go(29, at(50)).go(1, at(39.9)).go(29, at(50));
  EXPECT_EQ(attempt.state(), LessonState::kGoingOn);
  attempt.go(1);
  EXPECT_EQ(attempt.state(), LessonState::kReached);
}

TEST(HearTheMiddle, HintsToTheOtherSide) {
  const auto touch = [](TickReport& tick) { tick.wallTicks = 1; };
  EXPECT_THAT(Attempt(kMiddle).go(5, at(10)).go(1, touch).failure(), HasSubstr("Steer right"));
  EXPECT_THAT(Attempt(kMiddle).go(5, at(90)).go(1, touch).failure(), HasSubstr("Steer left"));
  EXPECT_THAT(Attempt(kMiddle).go(5, at(10)).go(1, in(2)).failure(), HasSubstr("Steer right"));
}

TEST(StayOffTheMarbles, IsReachedBehindTheTurn) {
  Attempt attempt(kMarbles);
  attempt.go(50).go(90, in(2));
  EXPECT_EQ(attempt.state(), LessonState::kGoingOn);
  attempt.go(1, in(3));
  EXPECT_EQ(attempt.state(), LessonState::kReached);
}

TEST(StayOffTheMarbles, FailsWithTheFirstMarble) {
  const auto marbles = [](double lateral, int segment) {
    return [=](TickReport& tick) {
      tick.marblesTicks = 1;
      tick.lateralPosition = lateral;
      tick.segment = segment;
    };
  };
  EXPECT_THAT(Attempt(kMarbles).go(1, marbles(97, 2)).failure(), HasSubstr("pushes you to the right"));
  EXPECT_THAT(Attempt(kMarbles).go(1, marbles(3, 2)).failure(), HasSubstr("too far to the left"));
  EXPECT_THAT(Attempt(kMarbles).go(1, marbles(3, 1)).failure(), HasSubstr("on the straight already"));
}

std::function<void(TickReport&)> turning(int gear, double rpm) {
  return [=](TickReport& tick) {
    tick.gear = gear;
    tick.engineRpm = rpm;
  };
}

TEST(ChangeUp, IsReachedInFourthGear) {
  Attempt attempt(kShift);
  attempt.go(10, turning(1, 80)).go(10, turning(2, 90)).go(20, turning(3, 100));
  EXPECT_EQ(attempt.state(), LessonState::kGoingOn);
  attempt.go(1, turning(4, 75));
  EXPECT_EQ(attempt.state(), LessonState::kReached);
}

TEST(ChangeUp, MustNotComeTooEarly) {
  EXPECT_THAT(Attempt(kShift).go(10, turning(1, 79.4)).go(1, turning(2, 40)).failure(),
              HasSubstr("Too early: the engine was at 79 percent"));
}

TEST(ChangeUp, MustNotComeTooLate) {
  Attempt attempt(kShift);
  attempt.go(20, turning(1, 100));
  EXPECT_EQ(attempt.state(), LessonState::kGoingOn);
  EXPECT_THAT(attempt.go(1).failure(), HasSubstr("Too late"));
}

TEST(ChangeUp, EndsWithTheStraight) {
  EXPECT_THAT(Attempt(kShift).go(10, turning(1, 50)).go(1, in(2)).failure(),
              HasSubstr("The straight is over"));
}

TEST(BrakeForATurn, IsReachedBehindIt) {
  EXPECT_EQ(Attempt(kBrake).go(50).go(50, in(2)).go(1, in(3)).state(), LessonState::kReached);
}

TEST(BrakeForATurn, NamesTheSpeedThatWasTooMuch) {
  const auto fast = [](TickReport& tick) { tick.speed = 141.6; };
  const auto touch = [](TickReport& tick) {
    tick.wallTicks = 1;
    tick.speed = 100;
  };
  EXPECT_THAT(Attempt(kBrake).go(5, fast).go(5, in(2)).go(1, touch).failure(),
              HasSubstr(" You came into the turn at 142 miles an hour."));
  EXPECT_THAT(Attempt(kBrake).go(5, fast).go(1, touch).failure(), HasSubstr("before the turn"));
}

TEST(BrakeForATurn, DoesNotWaitForever) {
  EXPECT_THAT(Attempt(kBrake).go(901).failure(), HasSubstr("too slow"));
}

TEST(ThreeTurns, AreReachedBehindTheThird) {
  EXPECT_EQ(Attempt(kThreeTurns).go(5).go(5, in(2)).go(5, in(3)).go(5, in(4)).go(1, in(5)).state(),
            LessonState::kReached);
}

TEST(ThreeTurns, TellWhichOneWentWrongAndHow) {
  const auto touch = [](double lateral) {
    return [=](TickReport& tick) {
      tick.wallTicks = 1;
      tick.lateralPosition = lateral;
    };
  };
  EXPECT_THAT(Attempt(kThreeTurns).go(1, in(2)).go(1, touch(0)).failure(),
              StartsWith(" Turn 1 is a right one, and pushed you into the wall on the outside."));
  EXPECT_THAT(Attempt(kThreeTurns).go(1, in(3)).go(1, touch(0)).failure(),
              StartsWith(" Turn 2 is a left one. You steered into the wall on the inside"));
  EXPECT_THAT(Attempt(kThreeTurns).go(1, in(4)).go(1, touch(100)).failure(),
              StartsWith(" Turn 3 is a right one. You steered into the wall on the inside"));
  EXPECT_THAT(Attempt(kThreeTurns).go(1, touch(100)).failure(), HasSubstr("before the first turn"));
}

/// The race clock jumps by the service and by what is charged with it.
std::function<void(TickReport&)> serviced(double fine) {
  return [=](TickReport& tick) { tick.raceTicks += 140 + fine; };
}

TEST(APitStop, IsReachedWithoutAFine) {
  EXPECT_EQ(Attempt(kPitStop).go(5).go(50, in(0)).go(1, serviced(0)).state(), LessonState::kReached);
}

TEST(APitStop, TellsWhatTheFineIsFor) {
  EXPECT_THAT(Attempt(kPitStop).go(5).go(50, in(0)).go(1, serviced(300)).failure(), HasSubstr("too fast"));
  EXPECT_THAT(Attempt(kPitStop).go(5).go(50, in(0)).go(1, serviced(100)).failure(), HasSubstr("your box"));
  EXPECT_THAT(Attempt(kPitStop).go(5).go(50, in(0)).go(1, serviced(200)).failure(), HasSubstr("your box"));
}

TEST(APitStop, CanBePassed) {
  const auto further = [](TickReport& tick) { tick.lapPosition = 2501; };
  EXPECT_THAT(Attempt(kPitStop).go(5).go(1, further).failure(), HasSubstr("passed pit road"));
}

}  // namespace
}  // namespace vorn
