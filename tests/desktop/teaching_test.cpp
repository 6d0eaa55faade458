// The co-driver at the desktop: a lesson that is missed and one that is reached, and a preview, with real
// keys, and heard from the sound device. Runs within with_desktop.sh --record.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "desktop/player.h"
#include "desktop/recording.h"
#include "support/temporary_folder.h"

namespace vorn {
namespace {

constexpr const char* kTooLate =
    "too late the engine has been at its end for two seconds | too early the engine was at its end | "
    "well shifted all three times | that is the middle both sides are equally loud | a clean stop";
constexpr const char* kWellShifted =
    "well shifted all three times | too late the engine has been at its end for two seconds | "
    "too early the engine was at its end | that is the middle both sides are equally loud | a clean stop";
constexpr const char* kLongStraight =
    "long straight fifty seconds | short right very tight first gear | left easy first gear | "
    "the lap was stopped";

class Teaching : public testing::Test {
 protected:
  Teaching() { copySounds(folder); }

  /// The second when `text` is said; returns `milliseconds` later.
  double said(const std::string& text, int milliseconds) {
    player.waitFor(text);
    const double from = recording.now() - Recording::kBeforeCaption;
    player.rest(milliseconds);
    return from;
  }
  /// Changes up three times as the speeds tell; the verdict, which may be another one on a busy machine, and
  /// the second when it is said.
  std::pair<std::string, double> changeUp() {
    const std::vector<std::string> speeds{"75", "125", "175"};
    auto speed = speeds.begin();
    for (;;) {
      const std::string text = player.waitFor("");
      if (speed != speeds.end() && text.find(*speed) != std::string::npos) {
        player.keys.tap("Up", 150);
        ++speed;
      } else if (text.find(" Well ") == 0 || text.find(" Too ") == 0) {
        return {text, recording.now() - Recording::kBeforeCaption};
      }
    }
  }
  void choose(const std::string& key, const std::string& text) {
    player.answer(key);
    player.waitFor(text);
  }

  const TemporaryFolder folder;
  const Recording recording;
  Player player{folder.path()};
};

TEST_F(Teaching, ALessonAndAPreviewAreTakenFromTheMainMenuAndBack) {
  player.waitFor(" F 2 in any menu opens the co-driver");
  player.waitFor(" Select. Exit Game. ");
  choose("F2", " Co-driver. ");

  // A lesson: the speeds that are said tell when to change up.
  player.move("Down", " Lessons. ");
  choose("Enter", " Lessons. ");
  player.move("Down", " Stay off the marbles. ");
  player.move("Down", " Change up at the right revolutions. ");
  choose("Enter", " Give full gas on a long straight");
  player.rest(800);
  player.keys.press("LeftCtrl");
  EXPECT_TRUE(recording.isUnderstood(kTooLate, 3.4, [&] {
    player.answer("End");
    const double verdict = said(" Too late", 3100);
    player.waitFor(" Start your engine to try again");
    return verdict;
  }));
  bool isLessonOver = false;
  EXPECT_TRUE(recording.isUnderstood(kWellShifted, 2.2, [&] {
    if (isLessonOver) choose("Enter", " Give full gas on a long straight");
    player.answer("End");
    const auto [verdict, second] = changeUp();
    isLessonOver = verdict.find(" Well shifted") == 0;
    if (isLessonOver) {
      player.rest(2200);
    } else {
      player.waitFor(" Start your engine to try again");
    }
    return second;
  }));
  player.keys.release("LeftCtrl");

  // A preview, stopped by a key.
  player.answer("Escape");
  player.move("Down", " Preview a track. ");
  choose("Enter", " Maple Leaf");
  choose("Enter", " gently, ");
  bool isDriving = false;
  EXPECT_TRUE(recording.isUnderstood(kLongStraight, 2.2, [&] {
    if (std::exchange(isDriving, true)) {
      player.keys.tap("A", 120);
      player.waitFor(" The lap was stopped. ");
    }
    player.answer("Enter");
    return said(" long straight, ", 2000);
  }));
  player.rest(3000);
  const double driving = recording.now();
  player.rest(1500);
  EXPECT_GT(recording.level(driving, 1), 0.01) << "the car is heard";
  player.keys.tap("A", 120);
  player.waitFor(" The lap was stopped. ");

  player.answer("Escape");
  player.answer("Escape");
  player.answer("Escape");
  player.waitFor(" Select. Exit Game. ");
  player.move("Enter", " Thank you for playing ");
  EXPECT_EQ(player.waitForEnd(), 0);
}

}  // namespace
}  // namespace vorn
