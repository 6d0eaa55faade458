/// The command line, the choice of a backend, and the report of what ended the game.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "platform/common/utf8_path.h"
#include "platform/common/voice_probe.h"
#include "program/desktop_program.h"
#include "program/ghost_exchange.h"
#include "program/headless_program.h"
#include "program/process.h"
#include "state/track_names.h"

namespace vorn {
namespace {

constexpr int kFailed = 1;
constexpr int kBadCommandLine = 2;

struct CommandLine {
  bool headless = false;
  bool controllerInfo = false;
  bool listDevices = false;
  std::string importedGhost;                  ///< a file; empty: none
  std::pair<int, std::string> exportedGhost;  ///< a track and a file; empty: none
  HeadlessRequest session;
  std::string speech;
  std::optional<AidSet> aids;
  DesktopRequest desktop;
};

constexpr const char* kDesktopGroup = "At the desktop";

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
  belongs(app.add_option("--import-ghost", line.importedGhost, "take in a friend's laps from a file, and end")
              ->type_name("FILE"));
  belongs(app.add_option("--export-ghost", line.exportedGhost,
                         "put your best laps on a track, 1 to 10, into a file for a friend, and end")
              ->type_name("N FILE"));
  belongs(app.add_flag_callback(
      "--no-rumble", [&] { line.desktop.rumble = false; }, "controllers do not let collisions be felt"));
  belongs(app.add_option("--buffer", line.desktop.buffer,
                         "frames of the sound device's buffer, 64 to 8192 [as many as it needs]")
              ->check(CLI::Range(64, 8192))
              ->type_name("N"));
  belongs(app.add_option("--audio-device", line.desktop.audioDevice,
                         "sound device, by a name of --list-devices [the desktop's choice]")
              ->type_name("NAME"));
  belongs(app.add_flag("--list-devices", line.listDevices, "say which sound devices there are, and end"));
  belongs(app.add_flag("--swap-ears", line.desktop.swapEars, "exchange left and right"));
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

std::vector<std::string> speechNames() {
  std::vector<std::string> names;
  for (const NamedSpeech& speech : speechChoices()) names.emplace_back(speech.name);
  return names;
}

void checkTogether(const CommandLine& line) {
  checkOutputs(line.session);
  const auto& [track, file] = line.exportedGhost;
  if (!file.empty() && (track < 1 || track > kTracks)) {
    throw CLI::ValidationError("--export-ghost", "there are tracks 1 to 10");
  }
  const std::vector<std::string> choices =
      line.headless ? std::vector<std::string>{"virtual", "espeak"} : speechNames();
  if (!line.speech.empty() && std::find(choices.begin(), choices.end(), line.speech) == choices.end()) {
    throw CLI::ValidationError("--speech", line.speech + " is none of " + CLI::detail::join(choices, ", "));
  }
}

SpeechChoice speechChoice(const std::string& name) {
  for (const NamedSpeech& speech : speechChoices()) {
    if (speech.name == name) return speech.choice;
  }
  return SpeechChoice::kAuto;
}

int playHeadlessWithVoice(const CommandLine& line) {
  if (line.session.options.speech == HeadlessSpeech::kEspeak) {
    if (const std::string damage = damageOfVoiceData(); !damage.empty()) {
      std::cerr << damage << std::endl;
      return kFailed;
    }
  }
  return playHeadless(line.session, line.aids.value_or(AidSet{}));
}

/// At the desktop.
int playOrAnswer(const CommandLine& line) {
  const auto& [track, exported] = line.exportedGhost;
  if (!line.importedGhost.empty()) return importGhost(line.desktop.folder, utf8Path(line.importedGhost));
  if (!exported.empty()) return exportGhost(line.desktop.folder, track, utf8Path(exported));
  if (line.listDevices) return listAudioDevices();
  if (!line.controllerInfo) return playOnDesktop(line.desktop);
  tellOfControllers();
  return 0;
}

/// Tells what was asked for, or what is wrong. Returns the exit status.
int answerTo(const CLI::ParseError& error, const CLI::App& app) {
  std::ostringstream answer, problem;
  const bool isAnswer = app.exit(error, answer, problem) == 0;
  std::string text = (isAnswer ? answer : problem).str();
  if (text.ends_with('\n')) text.pop_back();
  isAnswer ? tellAnswer(text) : tellProblem(text);
  return isAnswer ? 0 : kBadCommandLine;
}

int play(std::vector<std::string> arguments) {
  CLI::App app("Vorn 1 TTS, a motor race for the ears");
  CommandLine line;
  std::string folder;
  app.name("vorn1");
  usePlainHelp(app);
  app.footer(
      "Up and Enter start a race; the manual tells the rest: docs/manual.md, beside the game manual.html.");
  app.set_help_flag("-h,--help", "say which options there are, and end");
  app.set_version_flag("--version", "Vorn 1 TTS " VORN_VERSION, "say which version this is, and end");
  addFolderOption(app, folder);
  app.add_option("--speech", line.speech,
                 "voice: " + CLI::detail::join(speechNames(), ", ") + "; headless: virtual or espeak")
      ->type_name("VOICE");
  addAidsOption(app, line.aids);
  addDesktopOptions(app, line);
  CLI::Option* const headless = addHeadlessOptions(app, line.session, line.headless);
  for (CLI::Option* const option : app.get_options()) {
    if (option->get_group() == kDesktopGroup) headless->excludes(option);
  }
  try {
    std::reverse(arguments.begin(), arguments.end());  // so the library takes them
    app.parse(std::move(arguments));
    checkTogether(line);
  } catch (const CLI::ParseError& error) {
    return answerTo(error, app);
  }
  if (!folder.empty()) line.session.options.folder = utf8Path(folder);
  if (line.speech == "espeak") line.session.options.speech = HeadlessSpeech::kEspeak;
  if (line.headless) return playHeadlessWithVoice(line);
  line.desktop.folder = utf8Path(folder);
  line.desktop.speech = speechChoice(line.speech);
  line.desktop.aids = line.aids;
  try {
    return playOrAnswer(line);
  } catch (const std::exception& error) {
    tellProblem(error.what());
    return kFailed;
  }
}

}  // namespace
}  // namespace vorn

int main(int argc, char** argv) {
  return vorn::play(vorn::prepareProcess(argc, argv));
}
