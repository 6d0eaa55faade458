#include "sessions/race/race_scene.h"

#include <algorithm>
#include <map>
#include <ostream>

namespace vorn {
namespace {

/// A menu with a controller listens half a second after it has spoken.
const std::string kMenuListens = "wait 550\n";

constexpr int kSegmentLengths[] = {0, 30000, 9000, 9000, 30000, 9000, 4800, 9000};

}  // namespace

std::string untilWelcome(Wheel wheel) {
  if (wheel == Wheel::kKeys) return atMainMenu() + toTrack(1);
  return atMainMenu() + menuUp() + menuEnter() + "wait say  Select, joystick \n" + kMenuListens +
         menuEnter() + "wait say  Select the track you wish to run, \n" + kMenuListens + menuEnter() +
         "wait say  Welcome to the \n";
}

std::string untilEngines(Wheel wheel, const std::string& laps) {
  return untilWelcome(wheel) + enterLaps(laps) +
         "wait say  Ladies and Gentlemen, Start Your Engines! \nwait 50\n";
}

std::string startControl(Wheel wheel) {
  return wheel == Wheel::kKeys ? "tap End 200\n" : "button 2 down\nwait 200\nbutton 2 up\n";
}

std::string untilCountdown(Wheel wheel, const std::string& laps) {
  return untilEngines(wheel, laps) + startControl(wheel) + "wait say  10 \n";
}

std::string untilAfterTen(int milliseconds) {
  return "wait " + std::to_string(milliseconds - 1) + "\n";  // the text is noticed a millisecond late
}

Driver hurriedDriver(const std::string& until) {
  Driver driver;
  driver.until = until;
  driver.onTick = [](const TickReport& tick) -> std::string {
    const int nearTheEnd = kSegmentLengths[tick.segment] - 1;
    // Past the end the car is on its way into the next segment.
    return tick.lapPosition < nearTheEnd ? "set lapPosition " + std::to_string(nearTheEnd) : "";
  };
  return driver;
}

void raceInAHurry(Session& session, const std::string& laps) {
  session.script(untilWelcome() + enterLaps(laps) + startOnKeyboard())
      .drive(hurriedDriver(" Your time for "));
}

int spokenMs(const std::string& text) {
  constexpr int kLetterMs = 60;
  return kLetterMs *
         static_cast<int>(text.size() - static_cast<std::size_t>(std::count(text.begin(), text.end(), ' ')));
}

void PrintTo(const Moment& moment, std::ostream* out) {
  *out << moment.ms << ": " << moment.what;
}

Moments momentsFrom(const TraceRecord& trace, const std::string& from, int skip) {
  Moments moments;
  std::int64_t start = 0;
  for (const TraceLine& line : trace.lines()) {
    const std::string what = describe(line);
    const std::int64_t ms = line.at("ms");
    if (moments.empty() && (what != from || skip-- > 0)) continue;
    if (moments.empty()) start = ms;
    if (line.at("ev") != "input") moments.push_back({ms - start, what});
  }
  return moments;
}

Moments first(const Moments& moments, std::size_t count) {
  return {moments.begin(), moments.begin() + static_cast<std::ptrdiff_t>(std::min(count, moments.size()))};
}

Moments through(const Moments& moments, const std::string& until) {
  const auto found = std::find_if(moments.begin(), moments.end(),
                                  [&](const Moment& moment) { return moment.what == until; });
  return {moments.begin(), found == moments.end() ? found : found + 1};
}

Moments about(const Moments& moments, const std::string& beginning) {
  Moments found;
  for (const Moment& moment : moments) {
    if (moment.what.starts_with(beginning)) found.push_back(moment);
  }
  return found;
}

std::vector<std::string> texts(const Moments& moments) {
  std::vector<std::string> found;
  for (const Moment& moment : moments) found.push_back(moment.what);
  return found;
}

std::int64_t when(const Moments& moments, const std::string& what) {
  for (const Moment& moment : moments) {
    if (moment.what == what) return moment.ms;
  }
  return -1;
}

std::vector<std::string> looping(const TraceRecord& trace) {
  std::map<std::string, bool> isLooping;
  for (const TraceLine& line : trace.of("sound")) {
    bool& loops = isLooping[line.at("buffer")];
    if (line.at("op") == "Play") loops = line.at("value") == 1;
    if (line.at("op") == "Stop" || line.at("op") == "release") loops = false;
  }
  std::vector<std::string> buffers;
  for (const auto& [buffer, loops] : isLooping) {
    if (loops) buffers.push_back(buffer);
  }
  return buffers;
}

std::string oneShotLeftPlaying(const TraceRecord& trace) {
  std::string file;
  for (const TraceLine& line : trace.of("sound")) {
    if (line.at("buffer") != "oneShotBuffer") continue;
    if (line.at("op") == "create") file = line.at("value");
    if (line.at("op") == "Stop" || line.at("op") == "release") file.clear();
  }
  return file;
}

}  // namespace vorn
