/// The game in a browser: what the page starts once it has given files, sounds and voices.

#include <string_view>

#include "input/control_maps.h"
#include "platform/common/key_codes.h"
#include "platform/web/web_platform.h"
#include "program/live_game.h"

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

int playGame(bool byLetters) {
  const auto browser = makeWebPlatform(thePage());
  LiveGame live;
  live.codriver.introducesItself = true;
  live.diagnose = [](const std::string& text) { thePage().tell(Tell::kDiagnosis, 0, text); };
  if (byLetters) live.prepare = driveByLetters;
  return playLive(*browser, live);
}

}  // namespace
}  // namespace vorn

int main(int argc, char** argv) {
  const int status = vorn::playGame(argc > 1 && argv[1] == vorn::kLetterKeys);
  vorn::thePage().tell(vorn::Tell::kEnded, status);
  return status;
}
