#include "program/headless_program.h"

#include <chrono>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <vector>

#include "platform/common/utf8_path.h"
#include "shell/start_up.h"
#include "state/fields.h"
#include "state/game_state.h"

namespace vorn {
namespace {

constexpr int kBadCommandLine = 2;

class PlainHelp : public CLI::Formatter {
 public:
  std::string make_option_opts(const CLI::Option* option) const override {
    const std::string type = option->get_type_name();
    return type.empty() ? "" : " " + type.substr(0, type.find(':'));  // behind it the library tells of checks
  }
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

AidSet parseAids(const std::string& list) {
  if (const auto aids = aidsNamed(list)) return *aids;
  std::string words;
  for (const AidName& name : kAidNames) words += std::string(name.word) + ", ";
  throw CLI::ValidationError("--aids",
                             list + " is neither none nor a list of " + words + "with commas between");
}

}  // namespace

void usePlainHelp(CLI::App& app) {
  app.formatter(std::make_shared<PlainHelp>());
}

void addFolderOption(CLI::App& app, std::string& folder) {
  app.add_option("--folder", folder, "folder of sounds, settings, records and log")
      ->check([](const std::string& name) {
        const std::filesystem::path path = utf8Path(name);
        std::error_code error;
        if (std::filesystem::is_directory(path, error)) return std::string();
        return (std::filesystem::exists(path, error) ? "Directory is actually a file: "
                                                     : "Directory does not exist: ") +
               name;
      })
      ->check([](const std::string& name) {
        return name.starts_with('-') ? "give a folder whose name begins with - as ./" + name : "";
      })
      ->type_name("DIR");
}

void addAidsOption(CLI::App& app, std::optional<AidSet>& aids) {
  app.add_option_function<std::string>(
         "--aids", [&](const std::string& list) { aids = parseAids(list); },
         "the co-driver's aids: turns, slider, lights, warnings, laps, ghost, with commas between, or none")
      ->type_name("LIST");
}

CLI::Option* addHeadlessOptions(CLI::App& app, HeadlessRequest& request, bool& isAsked) {
  constexpr const char* kGroup = "Headless session";
  CLI::Option* const headless =
      app.add_flag("--headless", isAsked, "play by script, without window, sound device and voice");
  const auto belongs = [&](CLI::Option* option) { option->needs(headless)->group(kGroup); };
  HeadlessOptions& session = request.options;
  headless->group(kGroup);
  belongs(app.add_option("--script", request.files.script, "statements to carry out; - is standard input")
              ->type_name("FILE"));
  belongs(app.add_option("--trace", request.files.trace, "where the trace goes; - is standard output")
              ->type_name("FILE"));
  belongs(app.add_option("--render", request.files.render,
                         "where the sound goes: a .wav file, or raw 16-bit samples; - is standard output")
              ->type_name("FILE"));
  belongs(app.add_flag("--controller", session.controller, "a game controller is attached"));
  belongs(app.add_option("--voices", session.voices, "number of installed voices [3]")
              ->check(CLI::Range(0, 1000))
              ->type_name("N"));
  belongs(app.add_option("--seed", session.seed, "seed of every random number [1]")->type_name("N"));
  belongs(app.add_option_function<std::string>(
                 "--date", [&](const std::string& text) { session.date = parseDate(text); },
                 "date at which the session starts [2026-03-07]")
              ->type_name("DATE"));
  belongs(app.add_option_function<std::string>(
                 "--time", [&](const std::string& text) { session.timeOfDay = parseTime(text); },
                 "time of day at which the session starts [12:00:00]")
              ->type_name("TIME"));
  belongs(app.add_option("--tick-count", session.tickCount,
                         "millisecond tick count at which the session starts [1000]")
              ->type_name("N"));
  belongs(app.add_option("--limit", session.limitMs,
                         "most virtual milliseconds one waiting statement may take [3600000]")
              ->check(CLI::NonNegativeNumber)
              ->type_name("MS"));
  return headless;
}

void checkOutputs(const HeadlessRequest& request) {
  if (request.files.trace == "-" && request.files.render == "-") {
    throw CLI::ValidationError("--render", "trace and render cannot both go to standard output");
  }
}

int playHeadless(const HeadlessRequest& request, const AidSet& aids) {
  std::optional<SessionFiles> files;
  try {
    files.emplace(request.files);
  } catch (const PlatformError& error) {
    std::cerr << error.what() << std::endl;
    return kBadCommandLine;
  }
  HeadlessPlatform platform(request.options, files->connections());
  const auto codriver = makeCodriverPlatform(platform, {.aids = aids});
  GameState game(*codriver);
  codriver->watch(game);
  platform.setFields({[&](std::string_view name) { return getField(game, name); },
                      [&](std::string_view name, double value) { return setField(game, name, value); }});
  return platform.run([&] {
    Form_Load(game);
    return 0;
  });
}

}  // namespace vorn
