#include "program/live_game.h"

#include <exception>

#include "platform/errors.h"
#include "shell/start_up.h"
#include "sound/playback.h"

namespace vorn {
namespace {

void reportError(Platform& platform, GameState& game, const LiveGame& live, const std::string& text) {
  live.diagnose(text);
  releaseSounds(game);  // or the engine would drone on under the message
  carryOn([&] {
    if (game.speechVoice) game.speechVoice->Speak(text, speak_flags::kQueue);
  });
  carryOn([&] { platform.messageBox(text); });
}

}  // namespace

int playLive(Platform& platform, const LiveGame& live) {
  const auto codriver = makeCodriverPlatform(platform, live.codriver);
  GameState game(*codriver);
  codriver->watch(game);
  try {
    if (live.prepare) live.prepare(game);
    Form_Load(game);
    return 0;
  } catch (const ProgramEnd& end) {
    return end.exitStatus;
  } catch (const std::exception& error) {
    reportError(*codriver, game, live, error.what());
    return 1;
  }
}

}  // namespace vorn
