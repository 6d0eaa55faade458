#include "support/game_rig.h"

#include <map>
#include <stdexcept>

#include "input/control_maps.h"
#include "sound/loading.h"
#include "state/fields.h"
#include "support/wav_maker.h"

namespace vorn {
namespace {

constexpr int kFramesOfAnyOther = 2205;
constexpr std::int64_t kLongestMs = 3'600'000;

// Half a second and more where a test looks at something while it sounds, and
// beyond the largest play position where positions are set.
const std::map<std::string, int> kFrames = {
    {"vorn1", 110000}, {"vorn30", 110000}, {"vorn31", 56000}, {"vorn32", 46000},
    {"vorn33", 91000}, {"vorn34", 133000}, {"vorn8", 57433},  {"vorn16", 44100},
    {"vorn24", 44100}, {"vorn23", 44100},  {"vorn2", 110250}, {"vorn11", 22050},
    {"vorn12", 22050}, {"vorn13", 22050},  {"vorn14", 11025}, {"vorn15", 4410},
};

void switchEverythingOn(GameState& g) {
  for (int* option : {&g.wallSound, &g.autoSpeedometer, &g.autoGearAnnounce, &g.pitRoadSnacks,
                      &g.trackLightPolls, &g.engineSound}) {
    *option = kOn;
  }
}

HeadlessOptions withController(HeadlessOptions options, Wheel wheel) {
  options.controller = wheel == Wheel::kController;
  return options;
}

}  // namespace

const std::filesystem::path& silentSounds() {
  static const TemporaryFolder folder;
  static const bool isFilled = [] {
    const auto put = [](const std::string& name) {
      const auto frames = kFrames.find(name);
      folder.write(name + ".wav", makeWav(frames == kFrames.end() ? kFramesOfAnyOther : frames->second));
    };
    for (int number = 0; number <= 34; ++number) put("vorn" + std::to_string(number));
    for (int number = 1; number <= 10; ++number) put("vorn1t" + std::to_string(number));
    return true;
  }();
  static_cast<void>(isFilled);
  return folder.path();
}

HeadlessOptions GameRig::silentOptions() {
  HeadlessOptions options;
  options.folder = silentSounds();
  return options;
}

GameRig::GameRig(Wheel wheel, const HeadlessOptions& options)
    : script_(*this),
      platform_(withController(options, wheel), connections()),
      startTicks_(options.tickCount),
      g(platform_),
      events_(g) {
  platform_.setFields(
      {.get = [this](std::string_view name) { return getField(g, name); },
       .set = [this](std::string_view name, double value) { return setField(g, name, value); }});
  platform_.setEventReceiver(&events_);
  switchEverythingOn(g);
  jhk(g);
  g.directSound = platform_.createSoundDevice();
  setUpKeyboard(g);
  detectController(g);
  g.inputDevice = wheel == Wheel::kController ? kJoystick : kKeyboard;
  g.speechVoice = platform_.createVoice();
  g.trackNames = {"", "Maple Leaf Tri Oval Track"};
  g.lapsToRun = 1;
  setwaves(g);
}

HeadlessConnections GameRig::connections() {
  HeadlessConnections connections;
  connections.script = &script_;
  connections.trace = &trace_;
  return connections;
}

GameRig::~GameRig() {
  platform_.setEventReceiver(nullptr);
}

std::optional<std::string> GameRig::Script::nextLine() {
  if (rig.now() > kLongestMs) throw std::runtime_error("the procedure does not end");
  if (lines.empty() && player) {
    std::string statement = player(rig.g);
    if (!statement.empty()) return statement;
  }
  if (lines.empty()) return "wait 1";
  std::string statement = lines.front();
  lines.pop_front();
  return statement;
}

void GameRig::plan(const std::vector<std::string>& statements) {
  script_.lines.insert(script_.lines.end(), statements.begin(), statements.end());
}

void GameRig::does(const std::string& statement) {
  plan({statement});
  g.platform.yield();
}

std::int64_t GameRig::now() const {
  return static_cast<std::uint32_t>(platform_.tickCount()) - static_cast<std::uint32_t>(startTicks_);
}

std::int64_t GameRig::timed(const Procedure& procedure) {
  const std::int64_t start = now();
  procedure(g);
  return now() - start;
}

std::vector<std::string> GameRig::told(const Procedure& procedure) {
  const std::size_t first = trace_.lines().size();
  procedure(g);
  return linesFrom(first, "");
}

std::vector<std::string> GameRig::toldTo(const std::string& buffer, const Procedure& procedure) {
  const std::size_t first = trace_.lines().size();
  procedure(g);
  return linesFrom(first, buffer + " ");
}

std::vector<std::string> GameRig::spokenIn(const Procedure& procedure) {
  const std::size_t first = trace_.lines().size();
  procedure(g);
  std::vector<std::string> spoken;
  for (std::size_t i = first; i < trace_.lines().size(); ++i) {
    const TraceLine& line = trace_.lines()[i];
    if (line.at("ev") == "speak") spoken.push_back(describe(line));
  }
  return spoken;
}

std::vector<std::string> GameRig::linesFrom(std::size_t first, const std::string& prefix) const {
  std::vector<std::string> found;
  for (std::size_t i = first; i < trace_.lines().size(); ++i) {
    const std::string line = describe(trace_.lines()[i]);
    if (line.starts_with(prefix)) found.push_back(line.substr(prefix.size()));
  }
  return found;
}

std::vector<std::string> GameRig::sounding() {
  const std::pair<const char*, SoundSlot*> slots[] = {
      {"engineBuffer", &g.engineBuffer},     {"sound19Buffer", &g.sound19Buffer},
      {"wallLeftBuffer", &g.wallLeftBuffer}, {"wallRightBuffer", &g.wallRightBuffer},
      {"sound4Buffer", &g.sound4Buffer},     {"markBuffer", &g.markBuffer},
      {"sound29Buffer", &g.sound29Buffer},   {"sound18Buffer", &g.sound18Buffer},
      {"sound9Buffer", &g.sound9Buffer},     {"hornBuffer", &g.hornBuffer},
      {"sound10Buffer", &g.sound10Buffer},   {"sound8Buffer", &g.sound8Buffer},
      {"oneShotBuffer", &g.oneShotBuffer},   {"panBuffer", &g.panBuffer},
      {"warnBuffer", &g.warnBuffer},
  };
  std::vector<std::string> names;
  for (const auto& [name, slot] : slots) {
    if (slot->isPlaying()) names.push_back(name);
  }
  return names;
}

std::string describe(const TraceLine& line) {
  const auto textOf = [&](const char* field) {
    const TraceValue& value = line.at(field);
    return value.is_string() ? value.get<std::string>() : value.is_null() ? "" : value.dump();
  };
  const std::string event = textOf("ev");
  if (event == "speak") {
    const std::string flags = textOf("flags");
    if (flags == "2") return "purge" + textOf("text");
    return (flags == "1" ? "queue " : "say ") + textOf("text");
  }
  if (event == "sound" || event == "device" || event == "voice") {
    const std::string whose = event == "voice" ? event : textOf(event == "sound" ? "buffer" : "device");
    const std::string value = textOf("value");
    return whose + " " + textOf("op") + (value.empty() ? "" : " " + value);
  }
  if (event == "input") return "input " + textOf("source") + " " + textOf("name") + " " + textOf("value");
  if (event == "echo") return "echo " + textOf("text");
  if (event == "file") return "file " + textOf("op") + " " + textOf("name");
  return event;
}

}  // namespace vorn
