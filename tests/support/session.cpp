#include "support/session.h"

#include <deque>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <variant>

#include "platform/headless/headless_platform.h"
#include "shell/start_up.h"
#include "state/fields.h"
#include "state/game_state.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr int kLookAgainMs = 100;
/// A menu listens 0.2 s after it has spoken; with a controller a track's name takes 0.3 s more.
const std::string kMenuListens = "wait 550\n";
/// A prompt first forgets the keys so far.
const std::string kPromptListens = "wait 20\n";

using Turn = std::variant<std::string, Driver, std::function<void()>>;

TickReport tickOf(const TraceLine& line) {
  TickReport tick{};
  line.at("raceTicks").get_to(tick.raceTicks);
  line.at("speed").get_to(tick.speed);
  line.at("gear").get_to(tick.gear);
  line.at("engineRpm").get_to(tick.engineRpm);
  line.at("soundRpm").get_to(tick.soundRpm);
  line.at("fuel").get_to(tick.fuel);
  line.at("lapPosition").get_to(tick.lapPosition);
  line.at("lateralPosition").get_to(tick.lateralPosition);
  line.at("lapsCompleted").get_to(tick.lapsCompleted);
  line.at("segment").get_to(tick.segment);
  line.at("poleDistance").get_to(tick.poleDistance);
  line.at("joySteering").get_to(tick.joySteering);
  line.at("joyGasBrake").get_to(tick.joyGasBrake);
  line.at("steerKeyTicks").get_to(tick.steerKeyTicks);
  line.at("marblesTicks").get_to(tick.marblesTicks);
  line.at("wallTicks").get_to(tick.wallTicks);
  line.at("pit").get_to(tick.pit);
  return tick;
}

/// Sounds that one test has read serve the next.
std::shared_ptr<RecordingCache> sharedRecordings() {
  static const auto recordings = std::make_shared<RecordingCache>();
  return recordings;
}

std::string repeated(const std::string& statements, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += statements;
  return all;
}

/// The player as a script: lines as they stand, and drivers who are asked for
/// theirs as the race goes on.
class Player : public ScriptSource {
 public:
  Player(std::deque<Turn> turns, const TraceRecord& trace) : turns_(std::move(turns)), trace_(trace) {}

  std::optional<std::string> nextLine() override {
    while (lines_.empty() && !turns_.empty()) {
      if (!takeTurn(turns_.front())) turns_.pop_front();
    }
    if (lines_.empty()) return std::nullopt;
    std::string line = std::move(lines_.front());
    lines_.pop_front();
    return line;
  }
  std::string name() const override { return "session"; }

 private:
  /// Returns whether the turn goes on.
  bool takeTurn(const Turn& turn) {
    if (const auto* statements = std::get_if<std::string>(&turn)) {
      add(*statements);
      return false;
    }
    if (const auto* happens = std::get_if<std::function<void()>>(&turn)) {
      (*happens)();
      return false;
    }
    isDriving_ = isDriving_ ? drive(std::get<Driver>(turn)) : takeWheel();
    if (isDriving_) add("wait tick or " + std::to_string(kLookAgainMs));
    return isDriving_;
  }

  bool takeWheel() {
    linesSeen_ = trace_.lines().size();
    idleMs_ = 0;
    return true;
  }

  /// Answers what has happened since the last look. Returns whether to drive on.
  bool drive(const Driver& driver) {
    const TraceLine* tick = nullptr;
    bool isOver = false;
    const std::size_t firstNew = std::exchange(linesSeen_, trace_.lines().size());
    idleMs_ += kLookAgainMs;
    for (std::size_t i = firstNew; i < linesSeen_; ++i) {
      const TraceLine& line = trace_.lines()[i];
      if (line.at("ev") == "tick") tick = &line;
      if (line.at("ev") != "speak" || line.at("text") == "") continue;
      const std::string text = line.at("text");
      idleMs_ = 0;
      if (driver.onSpeech) add(driver.onSpeech(text));
      isOver = isOver || (!driver.until.empty() && text.find(driver.until) != std::string::npos);
    }
    if (tick != nullptr) idleMs_ = 0;
    if (tick != nullptr && driver.onTick && !isOver) add(driver.onTick(tickOf(*tick)));
    return !isOver && idleMs_ < driver.patienceMs;
  }

  void add(const std::string& statements) {
    std::istringstream stream(statements);
    for (std::string line; std::getline(stream, line);) lines_.push_back(line);
  }

  std::deque<Turn> turns_;
  const TraceRecord& trace_;
  std::deque<std::string> lines_;
  bool isDriving_ = false;
  std::size_t linesSeen_ = 0;
  std::int64_t idleMs_ = 0;
};

}  // namespace

void linkSounds(const TemporaryFolder& folder) {
  for (const auto& sound : fs::directory_iterator(VORN_SOUND_FOLDER)) {
    if (sound.path().extension() != ".wav") continue;  // what a player has left there
    // Hard links cost a tenth of the time of a session's others; they need the same file system.
    std::error_code refused;
    const fs::path link = folder.path() / sound.path().filename();
    fs::create_hard_link(sound.path(), link, refused);
    if (refused) fs::create_symlink(sound.path(), link);
  }
}

Session::Session() {
  linkSounds(folder);
}

Session& Session::script(const std::string& statements) {
  turns_.emplace_back(statements);
  return *this;
}

Session& Session::drive(Driver driver) {
  turns_.emplace_back(std::move(driver));
  return *this;
}

Session& Session::meanwhile(std::function<void()> happens) {
  turns_.emplace_back(std::move(happens));
  return *this;
}

const TraceRecord& Session::run() {
  trace_ = TraceRecord();
  Player player(std::exchange(turns_, {}), trace_);
  std::ostringstream diagnostics;
  options.folder = folder.path();
  HeadlessPlatform platform(options, {&player, &trace_, listener, &diagnostics, sharedRecordings()});
  std::unique_ptr<CodriverPlatform> beside;
  if (codriver) beside = makeCodriverPlatform(platform, *codriver);
  GameState game(beside ? static_cast<Platform&>(*beside) : platform);
  if (beside) beside->watch(game);
  platform.setFields({[&](std::string_view name) { return getField(game, name); },
                      [&](std::string_view name, double value) { return setField(game, name, value); }});
  exitStatus_ = platform.run([&] {
    Form_Load(game);
    return 0;
  });
  diagnostics_ = diagnostics.str();
  return trace_;
}

const std::vector<std::string>& mainMenuEntries() {
  static const std::vector<std::string> entries = {" Exit Game. ",
                                                   " Reed Instructions. ",
                                                   " reed track descriptions ",
                                                   " reed log file ",
                                                   " delete log file ",
                                                   " reed records file ",
                                                   " reset records ",
                                                   " change voice ",
                                                   " adjust rate of speech ",
                                                   " adjust volume ",
                                                   " Check speakers ",
                                                   " reed default joystick configuration ",
                                                   " configure joystick ",
                                                   " Reset joystick configuration ",
                                                   " reed default key board configuration ",
                                                   " configure key board ",
                                                   " Reset key board configuration ",
                                                   " change game options ",
                                                   " change car engine sound ",
                                                   " Start Game. "};
  return entries;
}

std::string atMainMenu() {
  return "wait say  Select. Exit Game. \n" + kMenuListens;
}

std::string menuUp(int count) {
  return repeated("tap Up\n" + kMenuListens, count);
}

std::string menuDown(int count) {
  return repeated("tap Down\n" + kMenuListens, count);
}

std::string menuEnter() {
  return "tap Enter\n";
}

std::string toTrack(int track, bool controllerAttached) {
  std::string script = menuUp() + menuEnter();
  if (controllerAttached) script += "wait say  Select, joystick \n" + kMenuListens + menuDown() + menuEnter();
  script +=
      "wait say  Select the track you wish to run, \n" + kMenuListens + menuDown(track - 1) + menuEnter();
  return script + "wait say  Welcome to the \n";
}

std::string enterLaps(const std::string& laps) {
  return "wait say  Enter the number of laps that you wish to run. \n" + kPromptListens + "type " + laps +
         "\ntap Enter\nwait say  correct for the number of laps to run?\n" + kPromptListens + "tap Enter\n";
}

std::string startOnKeyboard() {
  return "wait say  Ladies and Gentlemen, Start Your Engines! \nwait 50\ntap End 200\nwait say  10 \n"
         "press LeftCtrl\nwait 10600\npress Up\nwait tick or 5000\nrelease Up\n";
}

}  // namespace vorn
