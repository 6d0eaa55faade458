// Writes the script of a race that a driver drives, to be replayed without one.

#include <cstdlib>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

#include "sessions/tracks/keyboard_driver.h"
#include "sessions/tracks/one_race.h"
#include "sessions/tracks/pit_stop_driver.h"
#include "sessions/tracks/wheel_script.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

template <typename SomeDriver>
TickDriver drives(const Track& track) {
  return
      [driver = std::make_shared<SomeDriver>(track)](const TickReport& tick) { return driver->after(tick); };
}

/// What a driver does, as a plain script.
class Recorder {
 public:
  /// Hands on the driver's statements after a tick; axes that stay where they are say nothing.
  std::string note(const std::string& statements) {
    ++ticks_;
    std::istringstream lines(statements);
    std::string changes;
    for (std::string line; std::getline(lines, line);) {
      if (line.rfind("axis ", 0) == 0 && std::exchange(axes_[line[5]], line) == line) continue;
      changes += line + '\n';
    }
    if (!changes.empty()) script_ += waitForTicks() + changes;
    return changes;
  }

  std::string script() { return script_ + waitForTicks(); }

 private:
  /// A minute is more than the longest stop in the pits.
  std::string waitForTicks() {
    if (ticks_ == 0) return "";
    return "wait tick " + std::to_string(std::exchange(ticks_, 0)) + " or 60000\n";
  }

  int ticks_ = 0;
  std::map<char, std::string> axes_;
  std::string script_;
};

TickDriver driverOf(const std::string& how, const Track& track) {
  if (how == "keys") return drives<PlanningDriver>(track);
  if (how == "pit") return drives<PitStopDriver>(track);
  return drives<WheelScript>(track);
}

int record(int number, const std::string& how) {
  const Device device = how == "keys" ? Device::kKeys : Device::kWheel;
  const Track& track = *allTracks()[static_cast<std::size_t>(number - 1)];
  Recorder recorder;
  const TickDriver driver = driverOf(how, track);
  const OneRace race(number, device, [&](const TickReport& tick) { return recorder.note(driver(tick)); });
  std::cerr << race.diagnostics();
  if (!race.isFinished()) return 1;
  if (device == Device::kWheel) std::cout << "# options: --controller\n";
  std::cout << offTheGrid(number, device) << recorder.script() << "wait 5000\nwait quiet\nend\n";
  return race.exitStatus();
}

}  // namespace
}  // namespace vorn

int main(int argc, char** argv) {
  const std::string how = argc == 3 ? argv[2] : "";
  const int number = argc == 3 ? std::atoi(argv[1]) : 0;
  if (number < 1 || number > 10 || (how != "wheel" && how != "keys" && how != "pit")) {
    std::cerr << "usage: " << argv[0] << " TRACK(1..10) wheel|keys|pit\n";
    return 2;
  }
  return vorn::record(number, how);
}
