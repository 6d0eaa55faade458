#include "program/desktop_program.h"

#include <functional>
#include <iostream>
#include <memory>

#include "demo/demo_platform.h"
#include "demo/virtual_demo.h"
#include "platform/headless/session_files.h"
#include "program/game_folder.h"
#include "shell/start_up.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr const char* kDemoFile = "demo.wav";

void reportError(Platform& platform, GameState& game, const std::string& text) {
  std::cerr << text << std::endl;
  carryOn([&] {
    if (game.speechVoice) game.speechVoice->Speak(text, speak_flags::kQueue);
  });
  carryOn([&] { platform.messageBox(text); });
}

int playOn(Platform& platform) {
  GameState game(platform);
  try {
    Form_Load(game);
    return 0;
  } catch (const ProgramEnd& end) {
    return end.exitStatus;
  } catch (const std::exception& error) {
    reportError(platform, game, error.what());
    return 1;
  }
}

/// The demonstration in virtual time, into a file that can be listened to anywhere.
int recordDemonstration(const fs::path& folder, int track) {
  std::error_code error;
  const fs::path current = fs::current_path(error);
  const auto sink = [&] {
    try {
      return openRenderSink((current / kDemoFile).string());
    } catch (const PlatformError&) {
      return openRenderSink((folder / kDemoFile).string());
    }
  }();
  HeadlessOptions options;
  options.folder = folder;
  options.speech = HeadlessSpeech::kEspeak;
  HeadlessConnections connections;
  connections.render = sink.get();
  return playVirtualDemo(track, options, connections, std::cout).exitStatus;
}

}  // namespace

int playOnDesktop(const DesktopRequest& request) {
  const fs::path folder = gameFolder(request.folder);
  fillWithSounds(folder);
  DesktopOptions options;
  options.folder = folder;
  options.speech = request.speech;
  if (request.captions && !request.demonstration) options.captions = &std::cout;
  std::unique_ptr<Platform> desktop;
  try {
    desktop = makeDesktopPlatform(options);
  } catch (const DesktopUnavailable& missing) {
    std::cerr << missing.what()
              << "\nUntil then, a demonstration lap without them: what it sounds like goes to " << kDemoFile
              << ", what is said follows.\n"
              << std::endl;
    return recordDemonstration(folder, request.track);
  }
  if (!request.demonstration) return playOn(*desktop);
  return playOn(*makeDemoPlatform(*desktop, request.track, std::cout));
}

}  // namespace vorn
