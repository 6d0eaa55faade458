/// Sessions of the shell and what they tell: traces as lists of a few words a
/// line, and the ways to where a test begins.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/session.h"

namespace vorn {

using Story = std::vector<std::string>;

/// Every line of the trace in a few words: "say text", "queue text", "purge",
/// "oneShotBuffer Play 0", "voice Rate 5", "keyboard Acquire", "read vorn1joy.cfg",
/// "box text", "program name 3", "value gear 0", "end 0". Player's input is left out.
Story storyOf(const TraceRecord& trace);
/// The part of the story after the line "echo `mark`", and up to the line "echo `end`" where one is named.
Story storyAfter(const TraceRecord& trace, const std::string& mark, const std::string& end = "");
/// Of a story, the lines that begin with one of `beginnings`.
Story only(const Story& story, const std::vector<std::string>& beginnings);
/// What is spoken: "say ...", "queue ..." and "purge".
Story speechIn(const Story& story);

/// When the first line that the story tells as `line` was traced; -1: never.
std::int64_t timeOf(const TraceRecord& trace, const std::string& line);
/// When each line that is told as `line` was traced.
std::vector<std::int64_t> timesOf(const TraceRecord& trace, const std::string& line);

/// The last answer to `get`, as the trace writes it.
std::string answer(const TraceRecord& trace, const std::string& field);
/// Statements that ask for fields.
std::string get(const std::vector<std::string>& fields);

/// How long the silent voice takes for a text at rate 0.
std::int64_t spokenMs(const std::string& text);

/// What echoing a key sounds like at rate 0.
Story echoed(const std::string& character);
Story operator+(Story first, const Story& second);

/// Taps keys one after the other: "Up Up Enter".
std::string taps(const std::string& names);

/// From the start of the program to the prompt for the laps on a track (keyboard, no controller).
std::string atLapsPrompt(int track = 1);
/// From there to a race that is over but for its finish: one lap in a few ticks, by keyboard.
std::string raceOver(const std::string& laps = "1");

/// How the race is to have ended.
struct Finish {
  double raceTime = 75.5;
  int raceHours = 0, raceMinutes = 1;
  double raceSeconds = 15.5;
  double fuel = 20.5;
};
/// While the finish is celebrated, makes the race have ended so.
std::string finish(const Finish& how);

/// The log of one start of the program on the usual day.
extern const std::string kLogHeader;

}  // namespace vorn
