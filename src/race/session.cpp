#include "race/session.h"

#include <cmath>

#include "clock/waits.h"
#include "input/events.h"
#include "race/controls.h"
#include "race/drive_train.h"
#include "race/walls.h"
#include "sound/loading.h"
#include "sound/playback.h"
#include "speech/speech.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr int kSetUpQuieterBy = 1000;
constexpr double kIdleRpm = 5;
constexpr std::uint32_t kLongestCrankingMs = 3500;
constexpr int kCrankingGas = -1;
constexpr double kReactionStepMs = 9;
constexpr double kReactionStepsATick = 10;

/// What is counted aloud, and after how many seconds from " 10 " (to the nearest whole one).
struct CountdownNumber {
  const char* text;
  double seconds;
};
constexpr CountdownNumber kCountdown[] = {{" 5 ", 6}, {" 4 ", 7}, {" 3 ", 8}, {" 2 ", 9}, {" 1 ", 10}};
constexpr double kHornSeconds = 11;

enum class StartResult { kStarted, kJumped, kAbandoned };

void resetCar(GameState& g) {
  g.lastTickCount = g.platform.tickCount();
  g.raceTicks = 0;
  g.lapPosition = 0;
  g.lateralPosition = kMiddle;
  g.gear = 0;
  g.speed = 0;
  g.engineRpm = 0;
  g.soundRpm = 0;
  g.marblesTicks = 0;
  g.wallTicks = 0;
  g.wallScrapePlaying = 0;
  g.forceCrash = 0;
  g.steerKeyTicks = 0;
  g.steerKeyLeft = 0;
  g.steerKeyRight = 0;
  if (g.inputDevice != kJoystick) g.joySteering = 0;
  g.pitEntryMissed = 0;
}

void clearShifts(GameState& g) {
  g.btnUpShift = 0;
  g.btnDownShift = 0;
  g.upShiftHeld = 0;
  g.downShiftHeld = 0;
}

void setUp(GameState& g) {
  g.poleDistance = 0;
  g.lapsCompleted = 0;
  g.fuel = kFullTank;
  g.sound4Buffer->SetVolume(g.soundVolume - kSetUpQuieterBy);
  g.sound19Buffer->SetVolume(g.soundVolume - kSetUpQuieterBy);
  g.sound4Buffer->Play(SoundBuffer::kOnce);
  dyke(g, 0.18);
  g.sound19Buffer->Play(SoundBuffer::kOnce);
  resetCar(g);
  ass(g);
  clearShifts(g);
  dyke(g, 1);
  g.sound4Buffer->SetVolume(g.soundVolume);
}

/// Lets the driver play with gas and horn while the car stands.
void revAndHonk(GameState& g) {
  if (isHornAsked(g)) playhorn(g);
  g.engineRpm = revsAsked(g);
  PlayRPM(g);
}

/// Cranks until the engine has caught or the driver gives gas. Returns false where he gave up.
bool crank(GameState& g) {
  const std::int32_t start = g.platform.tickCount();
  g.waitUntilTick = static_cast<std::int32_t>(static_cast<std::uint32_t>(start) + kLongestCrankingMs);
  do {
    readRaceDevice(g);
    g.platform.yield();
    if (isEscapeAsked(g)) return false;
  } while (millisecondsSince(g, start) <= kLongestCrankingMs && !isGasAsked(g, kCrankingGas));
  return true;
}

void idle(GameState& g) {
  resetEnginePitch(g);
  g.engineBuffer->SetVolume(g.soundVolume);
  g.engineBuffer->SetCurrentPosition(0);
  g.engineBuffer->Play(SoundBuffer::kLooping);
  g.soundRpm = kIdleRpm;
  g.engineRpm = kIdleRpm;
  PlayRPM(g);
  clearShifts(g);
  stopOneShot(g);
}

StartResult startEngine(GameState& g) {
  say(g, " Ladies and Gentlemen, Start Your Engines! ");
  clk(g);
  if (!waitForStartEngine(g)) return StartResult::kAbandoned;
  play2(g, "vorn2");
  g.waveFilesBad = 0;
  checkwaves(g);
  if (g.waveFilesBad == 1) {
    say(g, "Sorry, but one or more of the wave files seem to be corrupt. Please contact, Ostrin.");
    g.escapePressed = 1;
  }
  if (g.escapePressed == 1 || !crank(g)) {
    stopOneShot(g);
    return StartResult::kAbandoned;
  }
  idle(g);
  return StartResult::kStarted;
}

/// `isOldPress`: the shift control has been down since it jumped the last start.
bool isUpShiftPressed(const InputState& in, bool& isOldPress) {
  isOldPress = isOldPress && isUpShiftAsked(in);
  return isUpShiftAsked(in) && !isOldPress;
}

StartResult countDown(GameState& g, bool& isOldPress) {
  say2(g, " 10 ");
  const std::int32_t start = g.platform.tickCount();
  std::size_t said = 0;
  for (;;) {
    readRaceDevice(g);
    g.platform.yield();
    if (isEscapeAsked(g)) return StartResult::kAbandoned;
    if (isUpShiftPressed(g, isOldPress)) {
      spendButton(g, &InputState::btnUpShift);
      return StartResult::kJumped;
    }
    revAndHonk(g);
    const double seconds = roundEven(millisecondsSince(g, start) / 1000.0);
    for (; said < std::size(kCountdown) && seconds >= kCountdown[said].seconds; ++said) {
      say2(g, kCountdown[said].text);
    }
    if (seconds >= kHornSeconds) return StartResult::kStarted;
  }
}

/// From the horn to first gear: what the driver takes counts as race time.
StartResult react(GameState& g, bool& isOldPress) {
  g.sound4Buffer->Play(SoundBuffer::kOnce);
  const std::int32_t horn = g.platform.tickCount();
  for (;;) {
    readRaceDevice(g);
    g.platform.yield();
    // By the clock and not by passes, so that revving the engine does not change it.
    g.raceTicks = std::floor(static_cast<double>(millisecondsSince(g, horn)) / kReactionStepMs);
    if (isEscapeAsked(g)) return StartResult::kAbandoned;
    if (isUpShiftPressed(g, isOldPress)) break;
    revAndHonk(g);
  }
  clk(g);
  g.escapePressed = 0;
  g.upShiftHeld = 0;
  UpShift(g);
  g.raceTicks /= kReactionStepsATick;
  return StartResult::kStarted;
}

void scold(GameState& g) {
  stopall(g);
  play(g, "vorn5");
  dyke(g, 0.3);
  say(g,
      " you jumped the starting flag. "
      " You must wait until you hear the air horn to start the race. ");
  dyke(g, 0.3);
  sars(g);
}

StartResult tryToStart(GameState& g, bool isOldPress) {
  setUp(g);
  StartResult result = startEngine(g);
  if (result == StartResult::kStarted) result = countDown(g, isOldPress);
  if (result == StartResult::kStarted) result = react(g, isOldPress);
  return result;
}

void revFreely(GameState& g) {
  if (g.joystickPresent == 1) pollController(g);
  g.platform.yield();
  if (g.btnHorn == 1) playhorn(g);
  PlayRPM(g);
}

}  // namespace

void startrace(GameState& g) {
  bool hasJumped = false;
  while (tryToStart(g, hasJumped) == StartResult::kJumped) {
    scold(g);
    hasJumped = true;
  }
}

void EndTheRace(GameState& g) {
  constexpr double kRevStep = 3;
  clk(g);
  g.sound4Buffer->Play(SoundBuffer::kOnce);
  dyke(g, 0.5);
  play2(g, "vorn6");
  stopall2(g);
  sars(g);
  resetEnginePitch(g);
  g.engineBuffer->Play(SoundBuffer::kLooping);
  for (; g.engineRpm <= 100; g.engineRpm += kRevStep) revFreely(g);
  for (g.engineRpm = 100; g.engineRpm >= 2; g.engineRpm -= kRevStep) revFreely(g);
  g.engineBuffer->Stop();
  play(g, "vorn19");
  dyke(g, 0.4);
  clk(g);
}

}  // namespace vorn
