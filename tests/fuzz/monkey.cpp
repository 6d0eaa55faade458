// A player who presses anything: whole sessions of random keys and controller
// moves, one after the other in the same folder, whose files get damaged now and
// then between two sessions. Nothing may fail, hang or be left half written.
//
//   monkey FIRST_SEED LAST_SEED STATEMENTS
//
// plays each seed so many statements long; a seed plays the same every time. Where nobody came to race that
// is a failure, too.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <deque>
#include <iostream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "codriver/codriver_platform.h"
#include "platform/headless/headless_platform.h"
#include "shell/start_up.h"
#include "state/fields.h"
#include "state/game_state.h"
#include "support/session.h"
#include "text/settings_file.h"

namespace vorn {
namespace {

class Chance {
 public:
  explicit Chance(unsigned seed) : random_(seed) {}
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  bool once(int in) { return below(in) == 0; }
  template <typename Range>
  const auto& oneOf(const Range& range) {
    return range[static_cast<std::size_t>(below(static_cast<int>(std::size(range))))];
  }

 private:
  std::mt19937 random_;
};

const char* const kMenuKeys[] = {"Up",     "Down", "Enter", "Up", "Down", "Enter",
                                 "Escape", "Y",    "N",     "F1", "F2"};
const char* const kRaceKeys[] = {"LeftCtrl",   "LeftShift", "Left",     "Right",  "Up",   "Down",
                                 "RightShift", "End",       "PageDown", "PageUp", "Home", "Delete",
                                 "Insert",     "RightCtrl", "F2",       "F3",     "F4",   "F5",
                                 "F6",         "F7",        "F8",       "F9"};
const char* const kAnyKeys[] = {"A",          "Q",         "Z",     "0",          "1",         "5",
                                "9",          "Space",     "Tab",   "Backspace",  "CapsLock",  "LeftAlt",
                                "F2",         "F10",       "F12",   "Numpad0",    "Numpad5",   "NumpadEnter",
                                "Comma",      "Period",    "Minus", "Equals",     "Semicolon", "Slash",
                                "Apostrophe", "Backslash", "Grave", "LeftBracket"};
const char* const kAxes[] = {"X", "Y", "Rx", "Ry"};
const char* const kPauses[] = {"1", "10", "60", "210", "500", "3000", "12000"};
/// Leaps that bring a race on: to its finish, into a wall, into pit road, out of fuel.
const char* const kLeaps[] = {"set lapPosition 1000000", "set lateralPosition 100", "set lateralPosition 0",
                              "set lateralPosition 50",  "set forceCrash 1",        "set fuel 0.01",
                              "set lapPosition 2400",    "set speed 180",           "set raceTicks 100"};

std::string damaged(Chance& chance, std::string bytes) {
  const auto at = static_cast<std::size_t>(chance.below(static_cast<int>(bytes.size()) + 1));
  switch (chance.below(4)) {
    case 0:
      return bytes.substr(0, at);
    case 1:
      return bytes.insert(at, 1, static_cast<char>(chance.below(256)));
    case 2:
      return bytes.insert(at, "99999999999");
    default:
      if (at < bytes.size()) bytes[at] = static_cast<char>(chance.below(256));
      return bytes;
  }
}

/// Makes statements as they are asked for, until the given number is used up; then closes the window.
class Monkey : public ScriptSource {
 public:
  Monkey(Chance& chance, bool hasController, int& statementsLeft)
      : chance_(chance), hasController_(hasController), left_(statementsLeft) {
    if (chance.once(2)) startRace();
  }

  std::optional<std::string> nextLine() override {
    if (lines_.empty() && left_ > 0) act();
    if (lines_.empty()) {
      if (hasClosed_) return std::nullopt;
      hasClosed_ = true;
      return "close";
    }
    --left_;
    std::string line = std::move(lines_.front());
    lines_.pop_front();
    return line;
  }
  std::string name() const override { return "monkey"; }

 private:
  void add(const std::string& statements) {
    std::istringstream stream(statements);
    for (std::string line; std::getline(stream, line);) lines_.push_back(line);
  }

  // What starts a race from the top of the main menu, and anything anywhere else.
  void startRace() {
    add("wait 700\ntap Space\nwait 2500\ntap Up\nwait 300\ntap Enter\nwait 900\n");
    if (hasController_) add("tap Down\nwait 900\ntap Enter\nwait 1400\n");
    for (int moves = chance_.below(10); moves > 0; --moves) add("tap Down\nwait 600\n");
    add("tap Enter\nwait 4000\ntype " + std::to_string(1 + chance_.below(3)) +
        "\ntap Enter\nwait 100\ntap Enter\nwait 4500\ntap End 200\nwait 4000\npress LeftCtrl\nwait "
        "11500\ntap Up 150\n");
    if (chance_.once(2)) finishRace();
  }

  void finishRace() {
    add("wait 500\nrelease LeftCtrl\nset lapPosition 1000000\nwait 8000\ntype bo\ntap Enter\nwait 100\ntap "
        "Enter\n"
        "wait 900\n");
  }

  void act() {
    const int what = chance_.below(100);
    if (what < 40) return tap(chance_.oneOf(kMenuKeys), 20 + chance_.below(200));
    if (what < 50) return tap(chance_.oneOf(kAnyKeys), 1 + chance_.below(100));
    if (what < 62)
      return add(std::string(chance_.once(2) ? "press " : "release ") + chance_.oneOf(kRaceKeys));
    if (what < 66) return tap(chance_.oneOf(kRaceKeys), 20 + chance_.below(600));
    if (what < 82) return add(std::string("wait ") + chance_.oneOf(kPauses));
    if (what < 86) return add(chance_.oneOf(kLeaps));
    if (what < 87) return add(chance_.once(2) ? "focus off" : "focus on");
    if (what < 88) return startRace();
    if (what < 89) return add("type " + std::to_string(chance_.below(20000)));
    if (hasController_) return moveController();
    add("wait 30");
  }

  void tap(const std::string& key, int milliseconds) {
    add("tap " + key + " " + std::to_string(milliseconds));
    if (chance_.once(2)) add("wait 220");
  }

  void moveController() {
    if (chance_.once(30)) return add("lost");
    if (chance_.once(2)) {
      return add(std::string("axis ") + chance_.oneOf(kAxes) + " " +
                 std::to_string(chance_.below(20001) - 10000));
    }
    add("button " + std::to_string(chance_.below(chance_.once(5) ? 32 : 10)) +
        (chance_.once(2) ? " up" : " down"));
  }

  Chance& chance_;
  bool hasController_;
  int& left_;
  std::deque<std::string> lines_;
  bool hasClosed_ = false;
};

/// Looks at every line of the trace, and keeps the last ones for a report.
class Watch : public TraceSink {
 public:
  void write(const TraceLine& line) override {
    last_.push_back(traceText(line));
    if (last_.size() > 40) last_.pop_front();
    const std::int64_t ms = line.at("ms");
    check(ms >= ms_, "time goes back");
    ms_ = ms;
    if (line.at("ev") == "tick") checkTick(line);
    if (line.at("ev") == "speak") ++texts;
    if (line.at("ev") == "echo" || line.at("ev") == "box") check(false, "nobody asked for this");
    hasEnded = line.at("ev") == "end";
  }
  void flush() override {}
  void report() const {
    for (const std::string& line : last_) std::cerr << line << '\n';
  }

  std::int64_t milliseconds() const { return ms_; }
  std::int64_t texts = 0, ticks = 0;
  bool hasEnded = false;
  std::string complaint;

 private:
  void check(bool isTrue, const char* what) {
    if (!isTrue && complaint.empty()) complaint = what;
  }
  void checkTick(const TraceLine& line) {
    ++ticks;
    const auto real = [&](const char* field) { return line.at(field).get<double>(); };
    for (const char* field :
         {"raceTicks", "speed", "engineRpm", "soundRpm", "fuel", "lapPosition", "lateralPosition"}) {
      check(std::isfinite(real(field)), "a tick that is not finite");
    }
    check(real("speed") >= 0 && real("speed") < 1000, "a speed out of range");
    check(real("fuel") >= 0 && real("fuel") <= 22, "fuel out of range");
    check(real("gear") >= 0 && real("gear") <= 4, "a gear out of range");
    check(real("soundRpm") >= 0 && real("soundRpm") < 108, "an engine sound out of range");
  }

  std::deque<std::string> last_;
  std::int64_t ms_ = 0;
};

struct Totals {
  int sessions = 0;
  std::int64_t milliseconds = 0, ticks = 0, texts = 0, records = 0;
};

std::shared_ptr<RecordingCache> recordings() {
  static const auto shared = std::make_shared<RecordingCache>();
  return shared;
}

/// What is wrong with the files that a session has left; empty: nothing.
std::string faultOf(const TemporaryFolder& folder) {
  const auto linesOf = [&](const char* file) {
    return folder.has(file) ? textLines(folder.read(file)).size() : 0;
  };
  for (const std::string& name : folder.names()) {
    if (name.starts_with(".")) return name + " was left behind";
  }
  const std::pair<const char*, std::size_t> files[] = {
      {"vorn1joy.cfg", 12}, {"vorn1key.cfg", 15}, {"vorn1ops.cfg", 6}, {"vorn1voc.cfg", 4}};
  for (const auto& [file, lines] : files) {
    if (folder.has(file) && linesOf(file) < lines) return std::string(file) + " is short";
  }
  return {};
}

void damageSomething(Chance& chance, const TemporaryFolder& folder) {
  // Options out of their range end the program, as they should: they are left alone.
  for (const char* file : {"vorn1joy.cfg", "vorn1key.cfg", "vorn1maple0001.rec", "vorn1log.txt",
                           "vorn1records.txt", "vorn1aid.cfg", "vorn1maple.ghost"}) {
    if (folder.has(file) && chance.once(8)) folder.write(file, damaged(chance, folder.read(file)));
  }
}

/// Plays one session. Returns whether everything was as it should be.
bool playSession(unsigned seed, Chance& chance, Session& home, int& statementsLeft, Totals& totals) {
  HeadlessOptions options;
  options.folder = home.folder.path();
  options.controller = chance.once(2);
  options.voices = 1 + chance.below(4);
  options.seed = seed;
  Monkey monkey(chance, options.controller, statementsLeft);
  Watch watch;
  std::ostringstream diagnostics;
  HeadlessPlatform platform(options, {&monkey, &watch, nullptr, &diagnostics, recordings()});
  const auto codriver = makeCodriverPlatform(platform, {});
  GameState game(*codriver);
  codriver->watch(game);
  platform.setFields({[&](std::string_view name) { return getField(game, name); },
                      [&](std::string_view name, double value) { return setField(game, name, value); }});
  const int exitStatus = platform.run([&] {
    Form_Load(game);
    return 0;
  });
  ++totals.sessions;
  totals.milliseconds += watch.milliseconds();
  totals.ticks += watch.ticks;
  totals.texts += watch.texts;
  const std::string fault = watch.complaint.empty() ? faultOf(home.folder) : watch.complaint;
  if (exitStatus == 0 && watch.hasEnded && fault.empty()) return true;
  watch.report();
  std::cerr << "seed " << seed << ", session " << totals.sessions << ": exit " << exitStatus << ' ' << fault
            << ' ' << diagnostics.str() << std::endl;
  return false;
}

bool playSeed(unsigned seed, int statements, Totals& totals) {
  Chance chance(seed);
  Session home;
  while (statements > 0) {
    if (!playSession(seed, chance, home, statements, totals)) return false;
    damageSomething(chance, home.folder);
  }
  for (const std::string& name : home.folder.names()) totals.records += name.ends_with(".rec") ? 1 : 0;
  return true;
}

}  // namespace
}  // namespace vorn

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: " << argv[0] << " FIRST_SEED LAST_SEED STATEMENTS\n";
    return 2;
  }
  vorn::Totals totals;
  for (int seed = std::atoi(argv[1]); seed <= std::atoi(argv[2]); ++seed) {
    if (!vorn::playSeed(static_cast<unsigned>(seed), std::atoi(argv[3]), totals)) return 1;
  }
  std::cout << totals.sessions << " sessions, " << totals.milliseconds / 1000 << " s, " << totals.ticks
            << " car ticks, " << totals.texts << " texts, " << totals.records << " records left\n";
  if (totals.ticks == 0) {
    std::cerr << "nobody raced\n";
    return 1;
  }
  return 0;
}
