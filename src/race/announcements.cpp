#include "race/announcements.h"

#include "clock/waits.h"
#include "input/events.h"
#include "race/race_clock.h"
#include "records/log.h"
#include "speech/speech.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr std::uint32_t kRepeatGuardMs = 750;

/// Says `text` unless the same kind of request was answered just now.
void answer(GameState& g, std::optional<std::int32_t>& lastTick, const std::string& text) {
  if (lastTick && millisecondsSince(g, *lastTick) < kRepeatGuardMs) return;
  lastTick = g.platform.tickCount();
  stopspeech(g);
  say2(g, text);
}

std::string trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

void saycspot(GameState& g) {
  answer(g, g.lastSayPositionTick, numberText(roundEven(g.lateralPosition)));
}

void SayGear(GameState& g) {
  answer(g, g.lastSayGearTick, numberText(g.gear));
}

void SaySpeed(GameState& g) {
  answer(g, g.lastSaySpeedTick, numberText(roundEven(g.speed)));
}

void SayLap(GameState& g) {
  answer(g, g.lastSayLapTick, numberText(g.lapsCompleted + 1));
}

void SayGTV(GameState& g) {
  answer(g, g.lastSayFuelTick, numberText(roundDecimals(g.fuel, 1)));
}

void SayCurTime(GameState& g) {
  answer(g, g.lastSayTimeTick, elapsedTimeText(g.raceTicks));
}

std::string elapsedTimeText(double raceTicks) {
  // A whole minute stays 60 seconds here, a whole hour 60 minutes.
  double seconds = secondsOfTicks(raceTicks);
  int hours = 0, minutes = 0;
  for (; seconds > 60; seconds -= 60) ++minutes;
  for (; minutes > 60; minutes -= 60) ++hours;
  seconds =
      roundDecimals(seconds, 3);  // taking out the minutes leaves noise that would be heard as other digits
  std::string text;
  if (hours > 0) text += countedUnit(hours, "hour") + " ";
  if (minutes > 0) text += countedUnit(minutes, "minute") + " ";
  return text + numberText(wholePart(seconds)) + " point " + fractionDigits(numberText(seconds)) +
         " seconds. ";
}

void saygear2(GameState& g) {
  if (g.autoGearAnnounce == kOff) return;
  stopspeech(g);
  say2(g, numberText(g.gear));
}

void SayRaceTime(GameState& g) {
  clk(g);
  std::string text = " Your time for " + numberText(g.lapsToRun) + " lap" + (g.lapsToRun > 1 ? "s" : "") +
                     " on the " + g.trackNames.at(g.trackChoice) + " is, ";
  if (g.raceHours > 0) text += countedUnit(g.raceHours, "hour") + " ";
  if (g.raceMinutes > 0) text += countedUnit(g.raceMinutes, "minute") + " ";
  text += numberText(wholePart(g.raceSeconds)) + " point " + fractionDigits(numberText(g.raceTime));
  g.raceTimeText = " " + trimmed(text) + " seconds. ";
  appendToLog(g, {g.raceTimeText});
}

}  // namespace vorn
