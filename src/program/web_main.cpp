/// The game in a browser: what the page starts once it has given files, sounds and voices.

#include <string_view>

#include "codriver/codriver_platform.h"
#include "input/control_maps.h"
#include "platform/common/key_codes.h"
#include "platform/web/web_platform.h"
#include "shell/start_up.h"
#include "sound/playback.h"

namespace vorn {
namespace {

/// Ctrl and Shift, with which cars are driven elsewhere, are a browser's and a screen reader's own.
constexpr std::string_view kLetterKeys = "--letter-keys";

void driveByLetters(GameState& game) {
  jhk(game);
  game.keyMapGas = keyByName("A")->keyCode;
  game.keyMapBrake = keyByName("Z")->keyCode;
  printKeyCFG(game);
}

int playOn(Platform& platform, GameState& game) {
  try {
    Form_Load(game);
    return 0;
  } catch (const ProgramEnd& end) {
    return end.exitStatus;
  } catch (const std::exception& error) {
    releaseSounds(game);
    thePage().tell(Tell::kDiagnosis, 0, error.what());
    carryOn([&] { platform.messageBox(error.what()); });
    return 1;
  }
}

int playGame(bool byLetters) {
  const auto browser = makeWebPlatform(thePage());
  const auto codriver = makeCodriverPlatform(*browser, {.introducesItself = true});
  GameState game(*codriver);
  codriver->watch(game);
  if (byLetters) driveByLetters(game);
  return playOn(*codriver, game);
}

}  // namespace
}  // namespace vorn

int main(int argc, char** argv) {
  const int status = vorn::playGame(argc > 1 && argv[1] == vorn::kLetterKeys);
  vorn::thePage().tell(vorn::Tell::kEnded, status);
  return status;
}
