/// Writes the script of a headless session while the session is being played. Each statement comes after
/// waits that lead a replay to the moment at which it happened: a moment is told from the car ticks and the
/// requested texts before it, and from the yields since the last of those, each of which is a millisecond in
/// a replay.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <ostream>
#include <string>

namespace vorn {

class ScriptWriter {
 public:
  /// `out` is not owned. Every line is flushed, for the session may end anyhow.
  explicit ScriptWriter(std::ostream& out) : out_(out) {}

  void comment(const std::string& text);

  // What happens, in its order.
  void yielded() { ++now_; }
  void ticked() { milestones_.push_back({now_ + 1, {}}); }
  void requested(const std::string& text);  ///< Windows-1252, not empty

  std::int64_t now() const { return now_; }  ///< yields so far
  /// The yield in which a replay can first know of the last car tick or text, where it is not later than now;
  /// 0 before the first.
  std::int64_t latestMilestone() const;
  /// A statement that was carried out in yield `at`: not after now; before the last statement counts as with
  /// it.
  void put(const std::string& statement, std::int64_t at);
  /// Waits for everything so far, and then long enough for the game to end by itself.
  void finish();

 private:
  struct Milestone {
    std::int64_t yield;               ///< the first one that follows
    std::optional<std::string> text;  ///< none: a car tick
  };

  void waitUntil(std::int64_t yield);

  std::ostream& out_;
  std::int64_t now_ = 0;
  std::int64_t written_ = 1;          ///< yield of the last statement; a script begins in the first
  std::int64_t latest_ = 0;           ///< yield of the last milestone that was waited for
  std::deque<Milestone> milestones_;  ///< not waited for yet
};

}  // namespace vorn
