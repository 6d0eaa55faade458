/// What `race/` owns: the car and the race clock.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vorn {

inline constexpr double kFullTank = 22;  ///< gallons

struct RaceState {
  // Waits.
  std::int32_t waitUntilTick = 0;  ///< tick count (ms) at which the running `dyke` ends
  std::int32_t lastTickCount = 0;  ///< tick count (ms) at the end of the previous race tick

  // The race.
  double raceTicks = 0;  ///< ticks run, penalties and reaction included; 9.8 make a second
  int lapsCompleted = 0;
  double poleDistance = 0;  ///< driven since the last light pole, 0 .. 3000
  double raceTime = 0;      ///< seconds, three decimals, of the finished race
  int raceHours = 0;        ///< only ever grows within a run of the program
  int raceMinutes = 0;
  double raceSeconds = 0;
  std::string raceTimeText;  ///< the finished time as a sentence

  // The car.
  double lapPosition = 0;      ///< driven since the start of the segment; a tick at `speed` s covers s
  double lateralPosition = 0;  ///< 0 left wall .. 100 right wall
  double speed = 0;            ///< mph, never below 0
  int gear = 0;                ///< 0 neutral .. 4
  double engineRpm = 0;        ///< 0 .. 100, percent of the gear's range
  double soundRpm = 0;         ///< what the engine sound plays, 0 .. just under 108
  double fuel = 0;             ///< gallons, 0 .. 22
  int topGearUnlimited = 0;    ///< 1: fourth gear has no cap and loses nothing at full gas
  int upShiftHeld = 0;         ///< 1 from a shift until its control is released
  int downShiftHeld = 0;
  int idleSoundSkip = 0;  ///< 0 .. 2, thins engine updates at idle
  int revToggle = 0;      ///< 0 / 1, `PlayRPM` acts on every second call

  // Steering and walls.
  double steerDrag = 0;       ///< the track's factor on speed lost to steering
  int steerKeyLeft = 0;       ///< -10000 .. 0, build-up of the left key
  int steerKeyRight = 0;      ///< 0 .. 10000
  int steerKeyTicks = 0;      ///< ticks a steering key has been held
  int marblesTicks = 0;       ///< consecutive ticks in the marbles
  int wallTicks = 0;          ///< wall contacts since the last restart
  int wallScrapePlaying = 0;  ///< 1 while the scrape sounds
  int poleSide = 0;           ///< side of the last light pole: 1 left, 2 right; 0 before the first
  int forceCrash = 0;         ///< 1: the next wall contact is a crash whatever the counters

  // The cue that is being followed.
  double warnDistance = 1;  ///< length over which it rises
  double warnScale = 0;     ///< hundredths of a decibel a percent of the way still to go
  int warnPan = 0;          ///< hundredths of a decibel, negative: left
  int warnLoops = 0;        ///< 1: a cue that loops; 0: a voice that is said once

  // When each kind of request was answered last (ms); none: never.
  std::optional<std::int32_t> lastSayPositionTick;
  std::optional<std::int32_t> lastSayGearTick;
  std::optional<std::int32_t> lastSaySpeedTick;
  std::optional<std::int32_t> lastSayLapTick;
  std::optional<std::int32_t> lastSayTimeTick;
  std::optional<std::int32_t> lastSayFuelTick;
};

}  // namespace vorn
