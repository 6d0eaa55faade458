#include "sessions/shell/story.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "support/game_rig.h"

namespace vorn {
namespace {

std::string textOf(const TraceLine& line, const char* field) {
  const TraceValue& value = line.at(field);
  return value.is_string() ? value.get<std::string>() : value.is_null() ? "" : value.dump();
}

std::string inWords(const TraceLine& line) {
  const std::string event = textOf(line, "ev");
  if (event == "window") return "window " + textOf(line, "caption");
  if (event == "box" || event == "error") return event + " " + textOf(line, "text");
  if (event == "program") return "program " + textOf(line, "name") + " " + textOf(line, "style");
  if (event == "value") return "value " + textOf(line, "name") + " " + textOf(line, "value");
  if (event == "file") return textOf(line, "op") + " " + textOf(line, "name");
  if (event == "end") return "end " + textOf(line, "exit");
  return describe(line);
}

bool beginsWithOneOf(const std::string& line, const std::vector<std::string>& beginnings) {
  return std::any_of(beginnings.begin(), beginnings.end(),
                     [&](const std::string& beginning) { return line.starts_with(beginning); });
}

}  // namespace

const std::string kLogHeader = " \r\nVorn 1 log for 3/7/2026 By Ostrin \r\n";

Story storyOf(const TraceRecord& trace) {
  Story story;
  for (const TraceLine& line : trace.lines()) {
    if (line.at("ev") != "input") story.push_back(inWords(line));
  }
  return story;
}

Story storyAfter(const TraceRecord& trace, const std::string& mark, const std::string& end) {
  Story story = storyOf(trace);
  const auto begin = std::find(story.begin(), story.end(), "echo " + mark);
  if (begin == story.end()) return {"there is no echo " + mark};
  const auto last = end.empty() ? story.end() : std::find(begin, story.end(), "echo " + end);
  return {begin + 1, last};
}

Story only(const Story& story, const std::vector<std::string>& beginnings) {
  Story found;
  for (const std::string& line : story) {
    if (beginsWithOneOf(line, beginnings)) found.push_back(line);
  }
  return found;
}

Story speechIn(const Story& story) {
  return only(story, {"say ", "queue ", "purge"});
}

std::vector<std::int64_t> timesOf(const TraceRecord& trace, const std::string& line) {
  std::vector<std::int64_t> times;
  for (const TraceLine& traced : trace.lines()) {
    if (inWords(traced) == line) times.push_back(traced.at("ms"));
  }
  return times;
}

std::int64_t timeOf(const TraceRecord& trace, const std::string& line) {
  const auto times = timesOf(trace, line);
  return times.empty() ? -1 : times.front();
}

std::string answer(const TraceRecord& trace, const std::string& field) {
  const auto values = trace.values(field);
  if (values.empty()) return "never asked for";
  return values.back().is_string() ? values.back().get<std::string>() : values.back().dump();
}

std::string get(const std::vector<std::string>& fields) {
  std::string statements;
  for (const std::string& field : fields) statements += "get " + field + "\n";
  return statements;
}

std::int64_t spokenMs(const std::string& text) {
  const auto letters = std::count_if(text.begin(), text.end(), [](char c) { return c != ' '; });
  return std::max<std::int64_t>(1, 60 * letters);
}

Story echoed(const std::string& character) {
  return {"voice Rate 5", "purge", "queue " + character, "voice Rate 0"};
}

Story operator+(Story first, const Story& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

std::string taps(const std::string& names) {
  std::istringstream stream(names);
  std::string statements;
  for (std::string name; stream >> name;) statements += "tap " + name + "\n";
  return statements;
}

std::string atLapsPrompt(int track) {
  return atMainMenu() + toTrack(track) +
         "wait say  Enter the number of laps that you wish to run. \nwait 20\n";
}

std::string raceOver(const std::string& laps) {
  // A car that is suddenly far ahead leaves one segment of the oval a tick behind it.
  return atMainMenu() + toTrack(1) + enterLaps(laps) + startOnKeyboard() +
         "release LeftCtrl\nset lapPosition 1000000\nwait tick 6\n";
}

std::string finish(const Finish& how) {
  std::ostringstream statements;
  statements.precision(17);
  statements << "wait 300\n"
             << "set raceTime " << how.raceTime << "\nset raceHours " << how.raceHours << "\nset raceMinutes "
             << how.raceMinutes << "\nset raceSeconds " << how.raceSeconds << "\nset fuel " << how.fuel
             << "\n";
  return statements.str();
}

}  // namespace vorn
