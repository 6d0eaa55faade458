/// The command line, the choice of a backend, and the report of what ended the game.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <iostream>
#include <optional>
#include <string>

#include "codriver/codriver_platform.h"
#include "platform/common/voice_probe.h"
#include "platform/headless/session_files.h"
#include "program/desktop_program.h"
#include "program/installation.h"
#include "program/standard_streams.h"
#include "shell/start_up.h"
#include "state/fields.h"
#include "state/game_state.h"

namespace vorn {
namespace {

constexpr int kFailed = 1;
constexpr int kBadCommandLine = 2;

/// The help without the library's own remarks: an option, what it takes, what it does.
class PlainHelp : public CLI::Formatter {
 public:
  std::string make_option_opts(const CLI::Option* option) const override {
    const std::string type = option->get_type_name();
    return type.empty() ? "" : " " + type.substr(0, type.find(':'));  // behind it the library tells of checks
  }
};

struct CommandLine {
  bool headless = false;
  bool controllerInfo = false;
  HeadlessOptions session;
  SessionFileNames files;
  std::string speech;
  std::optional<AidSet> aids;
  DesktopRequest desktop;
};

/// The numbers of a text of the shape "00-00-00", zeros standing for digits; nothing for any other text.
std::optional<std::vector<int>> numbersShaped(const std::string& shape, const std::string& text) {
  if (text.size() != shape.size()) return std::nullopt;
  std::vector<int> numbers{0};
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isDigit = text[i] >= '0' && text[i] <= '9';
    if (shape[i] == '0' ? !isDigit : text[i] != shape[i]) return std::nullopt;
    if (isDigit) {
      numbers.back() = 10 * numbers.back() + (text[i] - '0');
    } else {
      numbers.push_back(0);
    }
  }
  return numbers;
}

std::chrono::year_month_day parseDate(const std::string& text) {
  const auto numbers = numbersShaped("0000-00-00", text);
  if (numbers) {
    const std::chrono::year_month_day date{std::chrono::year((*numbers)[0]),
                                           std::chrono::month(static_cast<unsigned>((*numbers)[1])),
                                           std::chrono::day(static_cast<unsigned>((*numbers)[2]))};
    if (date.ok()) return date;
  }
  throw CLI::ValidationError("--date", "not a date YYYY-MM-DD: " + text);
}

std::chrono::seconds parseTime(const std::string& text) {
  const auto numbers = numbersShaped("00:00:00", text);
  if (!numbers || (*numbers)[0] > 23 || (*numbers)[1] > 59 || (*numbers)[2] > 59) {
    throw CLI::ValidationError("--time", "not a time of day HH:MM:SS: " + text);
  }
  return std::chrono::hours((*numbers)[0]) + std::chrono::minutes((*numbers)[1]) +
         std::chrono::seconds((*numbers)[2]);
}

constexpr const char* kDesktopGroup = "At the desktop";

/// After those of the desktop, which it excludes.
void addHeadlessOptions(CLI::App& app, CommandLine& line) {
  constexpr const char* kGroup = "Headless session";
  CLI::Option* const headless =
      app.add_flag("--headless", line.headless, "play by script, without window, sound device and voice");
  for (CLI::Option* const option : app.get_options()) {
    if (option->get_group() == kDesktopGroup) headless->excludes(option);
  }
  const auto belongs = [&](CLI::Option* option) { option->needs(headless)->group(kGroup); };
  headless->group(kGroup);
  belongs(app.add_option("--script", line.files.script, "statements to carry out; - is standard input")
              ->type_name("FILE"));
  belongs(app.add_option("--trace", line.files.trace, "where the trace goes; - is standard output")
              ->type_name("FILE"));
  belongs(app.add_option("--render", line.files.render,
                         "where the sound goes: a .wav file, or raw 16-bit samples; - is standard output")
              ->type_name("FILE"));
  belongs(app.add_flag("--controller", line.session.controller, "a game controller is attached"));
  belongs(app.add_option("--voices", line.session.voices, "number of installed voices [3]")
              ->check(CLI::Range(0, 1000))
              ->type_name("N"));
  belongs(app.add_option("--seed", line.session.seed, "seed of every random number [1]")->type_name("N"));
  belongs(app.add_option_function<std::string>(
                 "--date", [&](const std::string& text) { line.session.date = parseDate(text); },
                 "date at which the session starts [2026-03-07]")
              ->type_name("DATE"));
  belongs(app.add_option_function<std::string>(
                 "--time", [&](const std::string& text) { line.session.timeOfDay = parseTime(text); },
                 "time of day at which the session starts [12:00:00]")
              ->type_name("TIME"));
  belongs(app.add_option("--tick-count", line.session.tickCount,
                         "millisecond tick count at which the session starts [1000]")
              ->type_name("N"));
  belongs(app.add_option("--limit", line.session.limitMs,
                         "most virtual milliseconds one waiting statement may take [3600000]")
              ->check(CLI::NonNegativeNumber)
              ->type_name("MS"));
}

void addDesktopOptions(CLI::App& app, CommandLine& line) {
  const auto belongs = [&](CLI::Option* option) { option->group(kDesktopGroup); };
  belongs(
      app.add_flag("--captions", line.desktop.captions, "everything spoken also goes to standard output"));
  belongs(app.add_option("--volume", line.desktop.volume, "decibels of the whole game, 0 and down [0]")
              ->check(CLI::Range(-60.0, 0.0))
              ->type_name("DB"));
  belongs(app.add_option("--duck", line.desktop.duck, "decibels by which a voice lowers the sounds [8]")
              ->check(CLI::Range(0.0, 40.0))
              ->type_name("DB"));
  belongs(app.add_flag("--controller-info", line.controllerInfo,
                       "say what the controls of each game controller are taken for, and end"));
  CLI::Option* const record =
      app.add_option("--record", line.desktop.record, "write what you do as the script of a headless session")
          ->type_name("FILE");
  belongs(record);
  CLI::Option* const demo =
      app.add_flag("--demo", line.desktop.demonstration, "a built-in driver races a lap");
  belongs(demo->excludes(record));
  belongs(app.add_option("--track", line.desktop.track, "number of the track that it races on [1]")
              ->check(CLI::Range(1, 10))
              ->type_name("N")
              ->needs(demo));
}

void checkTogether(const CommandLine& line) {
  if (line.files.trace == "-" && line.files.render == "-") {
    throw CLI::ValidationError("--render", "trace and render cannot both go to standard output");
  }
  const std::vector<std::string> choices =
      line.headless ? std::vector<std::string>{"virtual", "espeak"}
                    : std::vector<std::string>{"auto", "espeak", "speech-dispatcher"};
  if (!line.speech.empty() && std::find(choices.begin(), choices.end(), line.speech) == choices.end()) {
    throw CLI::ValidationError("--speech", line.speech + " is none of " + CLI::detail::join(choices, ", "));
  }
}

SpeechChoice speechChoice(const std::string& name) {
  if (name == "espeak") return SpeechChoice::kEspeak;
  if (name == "speech-dispatcher") return SpeechChoice::kSpeechDispatcher;
  return SpeechChoice::kAuto;
}

AidSet parseAids(const std::string& list) {
  if (const auto aids = aidsNamed(list)) return *aids;
  std::string words;
  for (const AidName& name : kAidNames) words += std::string(name.word) + ", ";
  throw CLI::ValidationError("--aids", list + " is neither none nor a list of " + words + "with commas between");
}

int playHeadless(const CommandLine& line) {
  if (line.session.speech == HeadlessSpeech::kEspeak) {
    if (const std::string damage = damageOfVoiceData(); !damage.empty()) {
      std::cerr << damage << std::endl;
      return kFailed;
    }
  }
  std::optional<SessionFiles> files;
  try {
    files.emplace(line.files);
  } catch (const PlatformError& error) {
    std::cerr << error.what() << std::endl;
    return kBadCommandLine;
  }
  HeadlessPlatform platform(line.session, files->connections());
  const auto codriver = makeCodriverPlatform(platform, {.aids = line.aids.value_or(AidSet{})});
  GameState game(*codriver);
  codriver->watch(game);
  platform.setFields({[&](std::string_view name) { return getField(game, name); },
                      [&](std::string_view name, double value) { return setField(game, name, value); }});
  return platform.run([&] {
    Form_Load(game);
    return 0;
  });
}

int play(int argc, char** argv) {
  CLI::App app("Vorn 1 TTS, a motor race for the ears");
  CommandLine line;
  std::string folder;
  app.name("vorn1");
  app.formatter(std::make_shared<PlainHelp>());
  app.footer("Up and Enter start a race; the manual tells the rest: man vorn1, or docs/manual.md.");
  app.set_help_flag("-h,--help", "say which options there are, and end");
  app.set_version_flag("--version", "Vorn 1 TTS " VORN_VERSION, "say which version this is, and end");
  app.add_option("--folder", folder, "folder of sounds, settings, records and log")
      ->check(CLI::ExistingDirectory)
      ->check([](const std::string& name) {
        return name.starts_with('-') ? "give a folder whose name begins with - as ./" + name : "";
      })
      ->type_name("DIR");
  app.add_option("--speech", line.speech,
                 "voice: auto, espeak or speech-dispatcher; headless: virtual or espeak")
      ->type_name("VOICE");
  app.add_option_function<std::string>(
         "--aids", [&](const std::string& list) { line.aids = parseAids(list); },
         "the co-driver's aids: turns, slider, lights, warnings, laps, ghost, with commas between, or none")
      ->type_name("LIST");
  addDesktopOptions(app, line);
  addHeadlessOptions(app, line);
  try {
    app.parse(argc, argv);
    checkTogether(line);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kBadCommandLine;
  }
  if (!folder.empty()) line.session.folder = folder;
  if (line.speech == "espeak") line.session.speech = HeadlessSpeech::kEspeak;
  if (line.headless) return playHeadless(line);
  if (line.controllerInfo) {
    tellOfControllers();
    return 0;
  }
  line.desktop.folder = folder;
  line.desktop.speech = speechChoice(line.speech);
  line.desktop.aids = line.aids;
  try {
    return playOnDesktop(line.desktop);
  } catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return kFailed;
  }
}

}  // namespace
}  // namespace vorn

int main(int argc, char** argv) {
  vorn::openStandardStreams();
  vorn::useInstalledVoiceData();
  return vorn::play(argc, argv);
}
