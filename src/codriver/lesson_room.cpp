#include "codriver/lesson_room.h"

#include "clock/waits.h"
#include "codriver/entries.h"
#include "codriver/lessons.h"
#include "codriver/teaching.h"
#include "demo/wheel_driver.h"
#include "input/events.h"
#include "race/controls.h"
#include "sound/playback.h"
#include "speech/speech.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

constexpr const char* kHowToBegin =
    " Hold the gas, and press the key or the button that starts your engine. Escape leaves. ";
constexpr const char* kHowToBeginWithoutGas =
    " Press the key or the button that starts your engine. Escape leaves. ";
constexpr const char* kOnceMore = " Start your engine to try again, or leave with Escape. ";

/// The co-driver's foot on the pedals, whatever the player's does.
class Pedals {
 public:
  Pedals(const GameState& g, double speed) : g_(g), speed_(speed) {}

  void press(KeyboardState& keys) const {
    keys.at(static_cast<std::size_t>(g_.keyMapGas)) = g_.speed < speed_ ? 1 : 0;
    keys.at(static_cast<std::size_t>(g_.keyMapBrake)) = 0;
  }
  void press(JoystickState& controller) const {
    const int axis = gasAxis(g_.speed < speed_ ? speed_ : 0, g_.gear);
    (g_.joyGasAxis == 1 ? controller.y : controller.ry) = axis;
  }

 private:
  const GameState& g_;
  double speed_;
};

/// Waits for the engine's key or button, and so learns which device the player wants. Returns false where he
/// leaves.
bool waitForStart(GameState& g) {
  g.escapePressed = 0;
  for (;;) {
    pollController(g);
    readKeyboard(g);
    g.platform.yield();
    if (isEscapeAsked(g)) return false;
    const bool isByKeys = isKeyDown(g, g.keyMapStartEngine);
    if (!isByKeys && g.btnStartEngine != 1) continue;
    g.inputDevice = isByKeys ? kKeyboard : kJoystick;
    stopspeech(g);
    return true;
  }
}

/// One attempt. Its verdict is `kGoingOn` where the player left it.
LessonVerdict attempt(GameState& g, TaughtPlatform& platform, const Lesson& lesson) {
  const LessonScene& scene = lesson.scene;
  const auto judge = lesson.judge();
  const Pedals pedals(g, scene.speed);
  LessonVerdict verdict;
  bool isDriving = true;  // the ticks that the game takes to notice its end are not judged
  platform.onTick = [&](const TickReport& tick) {
    if (scene.keepsSpeed) readController(g);  // which tells of itself only where the player moves it
    if (!isDriving) return;
    verdict = judge->after(tick);
    isDriving = verdict.state == LessonState::kGoingOn;
    if (!isDriving) g.escapePressed = 1;
  };
  if (scene.keepsSpeed) {
    platform.onKeys = [&](KeyboardState& keys) { pedals.press(keys); };
    platform.onController = [&](JoystickState& controller) { pedals.press(controller); };
    readController(g);
  }
  driveLap(g, scene.track, *allTracks()[static_cast<std::size_t>(scene.track - 1)],
           {.lapPosition = scene.lapPosition,
            .lateralPosition = scene.lateralPosition,
            .speed = scene.speed,
            .gear = scene.gear});
  platform.onTick = nullptr;
  platform.onKeys = nullptr;
  platform.onController = nullptr;
  return verdict;
}

void give(Cabin& cabin, const Lesson& lesson) {
  TaughtPlatform platform(cabin.game.platform, cabin.seat);
  GuestGame guest(platform, cabin.seat);
  GameState& g = guest.state;
  openSounds(g);
  say2(g, std::string(lesson.task) + (lesson.scene.keepsSpeed ? kHowToBeginWithoutGas : kHowToBegin));
  while (waitForStart(g)) {
    const LessonVerdict verdict = attempt(g, platform, lesson);
    stopspeech(g);
    if (verdict.state == LessonState::kGoingOn) break;
    say2(g, verdict.words);
    if (verdict.state == LessonState::kReached) break;
    say2(g, kOnceMore);
  }
  releaseSounds(g);
}

}  // namespace

void giveLessons(Cabin& cabin) {
  std::vector<std::string> names;
  for (const Lesson& lesson : allLessons()) names.emplace_back(lesson.name);
  offerEntries(cabin.game, " Lessons. ", names,
               [&](std::size_t number) { give(cabin, allLessons()[number]); });
}

}  // namespace vorn
