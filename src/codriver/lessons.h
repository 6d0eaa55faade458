/// The lessons: what each asks of the driver, where it is driven, and how it is judged. Pure.
#pragma once

#include <memory>
#include <span>
#include <string>

#include "platform/platform.h"

namespace vorn {

/// How a lesson stands after a tick.
enum class LessonState { kGoingOn, kReached, kFailed };

struct LessonVerdict {
  LessonState state = LessonState::kGoingOn;
  std::string words = {};  ///< a word where the goal is reached, a hint where it was missed
};

/// Watches one attempt, tick by tick.
class LessonJudge {
 public:
  virtual ~LessonJudge() = default;
  /// The verdict after the next tick. Not to be asked again once it is not `kGoingOn`.
  LessonVerdict after(const TickReport& tick);

 protected:
  LessonJudge() = default;
  const TickReport& before() const { return before_; }  ///< the tick before; all zero in the first one
  int ticks() const { return ticks_; }                  ///< of the attempt

 private:
  virtual LessonVerdict judge(const TickReport& tick) = 0;

  TickReport before_{};
  int ticks_ = 0;
};

/// Where a lesson begins: on the first straight of a track, in motion.
struct LessonScene {
  int track;  ///< 1 .. 10
  double lapPosition, lateralPosition, speed;
  int gear;
  bool keepsSpeed;  ///< the co-driver works the pedals
};

struct Lesson {
  const char* name;
  const char* task;  ///< what to do, in a few sentences
  LessonScene scene;
  std::unique_ptr<LessonJudge> (*judge)();
};

/// In the order in which they are to be taken.
std::span<const Lesson> allLessons();

}  // namespace vorn
