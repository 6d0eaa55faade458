#include "codriver/lessons.h"

#include <cmath>

#include "pit/rules.h"
#include "state/race_state.h"
#include "text/numbers.h"

namespace vorn {
namespace {

// Every attempt ends before the wall contacts add up to a crash.
constexpr int kMostContacts = 5;
constexpr int kLongestAttempt = 900;  // ticks, a minute and a half

LessonVerdict reached(const std::string& words) {
  return {LessonState::kReached, words};
}

LessonVerdict failed(const std::string& words) {
  return {LessonState::kFailed, words};
}

bool isLeft(const TickReport& tick) {
  return tick.lateralPosition < 50;
}

/// Stays in the middle fifth of the road for three seconds.
class MiddleJudge : public LessonJudge {
  LessonVerdict judge(const TickReport& tick) override {
    constexpr double kTolerance = 10;  // lateral units
    constexpr int kLongEnough = 30;    // ticks
    const bool isInTheMiddle = std::fabs(tick.lateralPosition - 50) <= kTolerance;
    inTheMiddle_ = isInTheMiddle ? inTheMiddle_ + 1 : 0;
    if (inTheMiddle_ >= kLongEnough) return reached(" That is the middle: both sides are equally loud. ");
    if (tick.wallTicks == 0 && tick.segment == 1) return {};
    return failed(isLeft(tick) ? " You were on the left, where the wall sound is louder on the left. "
                                 "Steer right, a little at a time, until both sides are equally loud. "
                               : " You were on the right, where the wall sound is louder on the right. "
                                 "Steer left, a little at a time, until both sides are equally loud. ");
  }

  int inTheMiddle_ = 0;
};

/// Takes an easy left turn between the marbles.
class MarblesJudge : public LessonJudge {
  LessonVerdict judge(const TickReport& tick) override {
    constexpr int kBehindTheTurn = 3;
    if (tick.segment == kBehindTheTurn) return reached(" You went through the turn without one marble. ");
    if (tick.marblesTicks == 0) return {};
    if (tick.segment == 1) {
      return failed(" You were in the marbles on the straight already. Keep both sides equally loud. ");
    }
    return failed(isLeft(tick)
                      ? " The bumping on the left were marbles: you steered too far to the left. "
                        "Steer less, or let go sooner. "
                      : " The bumping on the right were marbles: a left turn pushes you to the right. "
                        "Steer left from the joint on. ");
  }
};

/// Changes up three times, each when the engine is near the end of its gear but has not been there for long.
class ShiftJudge : public LessonJudge {
  LessonVerdict judge(const TickReport& tick) override {
    constexpr double kHighEnough = 80;  // percent
    constexpr int kTooLong = 20;        // ticks at the end of the gear
    constexpr int kTopGear = 4;
    const bool hasShiftedUp = ticks() > 0 && tick.gear > before().gear;
    if (hasShiftedUp && before().engineRpm < kHighEnough) {
      return failed(" Too early: the engine was at " + numberText(roundEven(before().engineRpm)) +
                    " percent. Wait until it stops climbing. ");
    }
    if (hasShiftedUp && tick.gear == kTopGear) return reached(" Well shifted, all three times. ");
    atTheEnd_ = tick.engineRpm >= 100 ? atTheEnd_ + 1 : 0;
    if (atTheEnd_ > kTooLong && tick.gear < kTopGear) {
      return failed(" Too late: the engine has been at its end for two seconds, and you get no faster. ");
    }
    if (tick.segment == 1 && ticks() < kLongestAttempt) return {};
    return failed(
        " The straight is over. Give full gas, and change up as soon as the engine stops climbing. ");
  }

  int atTheEnd_ = 0;
};

/// Brakes for a turn that no wheel holds the car in at full speed.
class BrakeJudge : public LessonJudge {
  LessonVerdict judge(const TickReport& tick) override {
    constexpr int kTurn = 2;
    if (tick.segment == kTurn && before().segment == 1) entrySpeed_ = before().speed;
    if (tick.segment > kTurn) return reached(" You were slow enough, and the wall was far away. ");
    if (tick.wallTicks > 0 && tick.segment == kTurn) {
      return failed(
          " You came into the turn at " + numberText(roundEven(entrySpeed_)) +
          " miles an hour. Brake while the sound ahead gets loud, to 80 with a wheel and to 40 with "
          "keys, and steer right from the joint on. ");
    }
    if (tick.wallTicks > 0) return failed(" You were at the wall before the turn. Stay in the middle. ");
    if (ticks() < kLongestAttempt) return {};
    return failed(" You were too slow to get through the turn. Give gas until the sound ahead gets loud. ");
  }

  double entrySpeed_ = 0;
};

/// Takes a right, a left and a right turn without touching a wall.
class ThreeTurnsJudge : public LessonJudge {
  LessonVerdict judge(const TickReport& tick) override {
    constexpr int kBehindTheThird = 5;
    if (tick.segment == kBehindTheThird) return reached(" Three turns in a row, and no wall. ");
    if (tick.wallTicks == 0 && ticks() < kLongestAttempt) return {};
    if (tick.segment == 1) return failed(" You were at the wall before the first turn. ");
    const bool isRightTurn = tick.segment % 2 == 0;
    const bool isOutside = isLeft(tick) == isRightTurn;
    const std::string number = std::to_string(tick.segment - 1);
    return failed(" Turn " + number + " is a " + (isRightTurn ? "right" : "left") +
                  (isOutside
                       ? " one, and pushed you into the wall on the outside. Steer sooner, or go slower. "
                       : " one. You steered into the wall on the inside: let go sooner. "));
  }
};

/// Makes a stop without a fine.
class PitJudge : public LessonJudge {
  LessonVerdict judge(const TickReport& tick) override {
    constexpr double kService = 141;  // race ticks from before the service to the tick behind it
    constexpr double kSpeeding = 300;
    const bool isOnPitRoad = tick.segment == 0;
    const double passed = tick.raceTicks - before().raceTicks;
    if (isOnPitRoad && ticks() > 0 && passed > 2) {
      const double fine = passed - kService;
      if (fine < 1) return reached(" A clean stop. ");
      return failed(
          fine >= kSpeeding
              ? " You were too fast. Brake to 50 in the lane, before the voice counts. "
              : " You missed your box. Stop when the voice says two, close to the wall on the left. ");
    }
    if (!isOnPitRoad && tick.lapPosition > kLastPitEntry) {
      return failed(
          " You have passed pit road. Its way in is right behind the start: press its key at once. ");
    }
    if (ticks() < kLongestAttempt) return {};
    return failed(" Pit road is waiting. Press its key right after the start. ");
  }
};

template <typename Judge>
std::unique_ptr<LessonJudge> make() {
  return std::make_unique<Judge>();
}

constexpr Lesson kLessons[] = {
    {" Hear the middle. ",
     " You begin near the left wall, and I work the pedals. Steer until the wall sounds are equally loud on "
     "both "
     "sides, and stay there for three seconds. ",
     {.track = 2, .lapPosition = 0, .lateralPosition = 20, .speed = 60, .gear = 1, .keepsSpeed = true},
     make<MiddleJudge>},
    {" Stay off the marbles. ",
     " After a short straight comes an easy turn to the left, and I work the pedals. Behind the joint steer "
     "left, "
     "so that you are not pushed into the marbles on the right. ",
     {.track = 1, .lapPosition = 24000, .lateralPosition = 50, .speed = 100, .gear = 2, .keepsSpeed = true},
     make<MarblesJudge>},
    {" Change up at the right revolutions. ",
     " Give full gas on a long straight, and change up three times, each time when the engine stops "
     "climbing. ",
     {.track = 2, .lapPosition = 0, .lateralPosition = 50, .speed = 20, .gear = 1, .keepsSpeed = false},
     make<ShiftJudge>},
    {" Brake for a turn. ",
     " You are fast, and a very tight turn to the right is ahead. Brake while its sound gets loud, and steer "
     "right "
     "behind the joint. ",
     {.track = 7, .lapPosition = 5000, .lateralPosition = 60, .speed = 120, .gear = 3, .keepsSpeed = false},
     make<BrakeJudge>},
    {" Take three turns in a row. ",
     " A right turn, a left one and another right one follow each other. Take all three without touching a "
     "wall. ",
     {.track = 3, .lapPosition = 18000, .lateralPosition = 50, .speed = 90, .gear = 2, .keepsSpeed = false},
     make<ThreeTurnsJudge>},
    {" A pit stop. ",
     " You begin at the line. Press the key or button for pit road at once, brake to 50 in the lane, steer "
     "left to "
     "the wall, and stop when the voice says two. ",
     {.track = 1, .lapPosition = 0, .lateralPosition = 50, .speed = 60, .gear = 1, .keepsSpeed = false},
     make<PitJudge>},
};

}  // namespace

LessonVerdict LessonJudge::after(const TickReport& tick) {
  LessonVerdict verdict = judge(tick);
  if (verdict.state == LessonState::kGoingOn && tick.wallTicks >= kMostContacts) {
    verdict = failed(" You were at the wall for too long. Steer away from the side that is louder. ");
  }
  before_ = tick;
  ++ticks_;
  return verdict;
}

std::span<const Lesson> allLessons() {
  return kLessons;
}

}  // namespace vorn
