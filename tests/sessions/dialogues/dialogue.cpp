#include "dialogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "support/game_rig.h"

namespace vorn {
namespace {

constexpr const char* kChosen = "chosen";
constexpr const char* kBack = "back";

// From the open menu to its entry `number`, the shorter way.
std::string wayTo(int number) {
  const int last = static_cast<int>(mainMenuEntries().size());
  return number - 1 <= last / 2 ? menuDown(number - 1) : menuUp(last + 1 - number);
}

}  // namespace

Told Dialogue::play(const std::string& statements, const std::vector<std::string>& events) {
  const auto& entries = mainMenuEntries();
  const auto entry = std::find(entries.begin(), entries.end(), entry_);
  if (entry == entries.end()) throw std::logic_error("no entry " + entry_);
  session.script(atMainMenu() + wayTo(static_cast<int>(entry - entries.begin()) + 1) + scriptBeforeChoice);
  if (beforeChoice) session.meanwhile(beforeChoice);
  session.script("echo " + std::string(kChosen) + "\n" + menuEnter() + statements);
  session.script("wait 600\necho " + std::string(kBack) + "\n" + menuDown());
  session.run();
  EXPECT_EQ(session.exitStatus(), 0) << session.diagnostics();
  EXPECT_EQ(trace().spoken().back(), *(entry + 1)) << "after the dialogue the menu stands where it stood";
  return linesBetweenMarks(events);
}

Told Dialogue::linesBetweenMarks(const std::vector<std::string>& events) {
  Told told;
  moments_.clear();
  bool isWithin = false;
  bool hasLetGo = false;
  int choice = 0;
  for (const TraceLine& line : trace().lines()) {
    const std::string event = line.at("ev");
    const int now = line.at("ms");
    if (event == "echo") isWithin = line.at("text") == kChosen;
    if (event == "echo" && isWithin) choice = now;
    if (!isWithin) continue;
    if (event == "speak" && !std::exchange(hasLetGo, true)) continue;
    if (std::find(events.begin(), events.end(), event) == events.end()) continue;
    told.push_back(describe(line));
    moments_.push_back(now - choice);
  }
  return told;
}

Told Dialogue::answers(const std::string& field) const {
  Told answers;
  for (const TraceValue& value : trace().values(field)) {
    answers.push_back(value.is_string() ? value.get<std::string>() : value.dump());
  }
  return answers;
}

std::string keys(const std::string& names) {
  std::istringstream stream(names);
  std::string script;
  for (std::string name; stream >> name;) script += "tap " + name + "\n";
  return script;
}

Told taken() {
  return {"purge"};
}

Told taken(const std::string& answer) {
  return {"purge", "queue " + answer};
}

Told echoed(const std::string& character) {
  return {"purge", "purge", "queue " + character};
}

Told echoedF1() {
  return {"purge", "purge"};
}

Told operator+(Told first, const Told& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

Told operator*(int times, const Told& lines) {
  Told all;
  for (int i = 0; i < times; ++i) all = all + lines;
  return all;
}

}  // namespace vorn
