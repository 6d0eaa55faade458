#include "sessions/tracks/one_race.h"

#include <utility>

namespace vorn {
namespace {

/// A menu with a controller listens half a second after it has spoken.
const std::string kListens = "wait 550\n";

std::string chooseWheelAndTrack(int track) {
  return menuUp() + menuEnter() + "wait say  Select, joystick \n" + kListens + menuEnter() +
         "wait say  Select the track you wish to run, \n" + kListens + menuDown(track - 1) + menuEnter() +
         "wait say  Welcome to the \n";
}

const std::string kStartByWheel =
    "wait say  Ladies and Gentlemen, Start Your Engines! \nwait 50\nbutton 2 down\nwait 100\nbutton 2 up\n"
    "wait say  10 \naxis Y -10000\nwait 10600\nbutton 8 down\nwait tick or 5000\nbutton 8 up\n";

}  // namespace

std::string offTheGrid(int track, Device device) {
  const bool hasWheel = device == Device::kWheel;
  return atMainMenu() + (hasWheel ? chooseWheelAndTrack(track) : toTrack(track)) + enterLaps("1") +
         (hasWheel ? kStartByWheel : startOnKeyboard());
}

OneRace::OneRace(int track, Device device, const TickDriver& driver, RenderSink* listener,
                 const std::optional<CodriverOptions>& codriver) {
  session_.codriver = codriver;
  session_.listener = listener;
  session_.options.controller = device == Device::kWheel;
  session_.script(offTheGrid(track, device));
  Driver atTheControls;
  atTheControls.until = " Your time for ";
  atTheControls.onTick = [&](const TickReport& tick) {
    ticks_.push_back(tick);
    return driver(tick);
  };
  session_.drive(atTheControls).script("get raceTime\nwait quiet\nend").run();
}

double OneRace::raceTime() const {
  const auto values = trace().values("raceTime");
  return values.empty() ? -1 : values.back().get<double>();
}

std::vector<int> OneRace::segments() const {
  std::vector<int> order;
  for (const TickReport& tick : ticks_) {
    if (order.empty() || order.back() != tick.segment) order.push_back(tick.segment);
  }
  return order;
}

std::vector<std::string> OneRace::filesOf(const std::string& buffer) const {
  const std::string create = "create ";
  std::vector<std::string> names;
  for (const std::string& operation : trace().soundsOf(buffer)) {
    if (operation.rfind(create, 0) != 0) continue;
    names.push_back(operation.substr(create.size(), operation.find('.') - create.size()));
  }
  return names;
}

}  // namespace vorn
