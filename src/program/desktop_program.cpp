#include "program/desktop_program.h"

#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "demo/demo_platform.h"
#include "demo/virtual_demo.h"
#include "platform/common/controller_info.h"
#include "platform/common/espeak_synth.h"
#include "platform/desktop/controllers.h"
#include "platform/headless/session_files.h"
#include "program/caption_stream.h"
#include "program/game_folder.h"
#include "program/live_game.h"
#include "program/process.h"
#include "recording/recording_platform.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

int playWithCodriver(Platform& platform, const CodriverOptions& options) {
  return playLive(platform, {.codriver = options,
                             .diagnose = [](const std::string& text) { std::cerr << text << std::endl; }});
}

/// A name in `folder` that no file bears: whatever stands there is the player's.
fs::path freeName(const fs::path& folder) {
  std::error_code error;
  fs::path name = folder / "demo.wav";
  for (int number = 2; fs::exists(fs::symlink_status(name, error)); ++number) {
    name = folder / ("demo-" + std::to_string(number) + ".wav");
  }
  return name;
}

/// The demonstration in virtual time, into a file that can be listened to anywhere.
int recordDemonstration(const std::string& reason, const fs::path& folder, int track) {
  const fs::path file = fs::absolute(freeName(folder));
  tellProblem(reason + "\nUntil then, a demonstration lap: what it sounds like goes to " + file.string() +
              ", what is said follows.\n");
  const auto sink = openRenderSink(file.string());
  HeadlessOptions options;
  options.folder = folder;
  if (EspeakSynth::isCarried()) options.speech = HeadlessSpeech::kEspeak;
  HeadlessConnections connections;
  connections.render = sink.get();
  return playVirtualDemo(track, options, connections, std::cout).exitStatus;
}

std::string asLines(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += (text.empty() ? "" : "\n") + line;
  return text;
}

}  // namespace

int listAudioDevices() {
  const std::vector<std::string> devices = audioDevices();
  if (devices.empty()) {
    tellProblem("There is no sound device.");
    return 1;
  }
  tellAnswer(asLines(devices));
  return 0;
}

int playOnDesktop(const DesktopRequest& request) {
  const GameFolder folder = gameFolder(request.folder);
  fillWithSounds(folder.path);
  if (const std::string problem = speechProblem(); !problem.empty()) {
    tellProblem(problem);
    return 1;
  }
  CaptionStream captions;
  DesktopOptions options;
  options.folder = folder.path;
  options.startsPrograms = folder.isTrusted;
  options.speech = request.speech;
  options.rumbles = request.rumble;
  options.duckDecibels = request.duck;
  options.quieterDecibels = -request.volume;
  options.bufferFrames = request.buffer;
  options.audioDevice = request.audioDevice;
  options.swapsEars = request.swapEars;
  if (request.captions && !request.demonstration) options.captions = &captions;
  std::unique_ptr<Platform> desktop;
  try {
    desktop = makeDesktopPlatform(options);
  } catch (const DesktopUnavailable& missing) {
    return recordDemonstration(missing.what(), folder.path, request.track);
  }
  if (request.demonstration) {
    const auto demonstration = makeDemoPlatform(*desktop, request.track, captions);
    return playWithCodriver(*demonstration, {.aids = request.aids.value_or(AidSet{})});
  }
  if (request.record.empty()) {
    return playWithCodriver(*desktop, {.aids = request.aids, .introducesItself = true});
  }
  const AidSet aids = request.aids.value_or(keptAids(desktop->files()).value_or(AidSettings{}).aids);
  const auto recorder = makeRecordingPlatform(*desktop, request.record, " --aids " + aidList(aids));
  return playWithCodriver(*recorder, {.aids = aids});
}

void tellOfControllers() {
  tellAnswer(asLines(controllerInfo(Controllers().facts())));
}

}  // namespace vorn
