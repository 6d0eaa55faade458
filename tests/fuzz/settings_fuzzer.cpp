// The four settings files: whatever stands in them, every control map is one that
// can be played with, what is written is read back, and nothing fails.

#include "fuzz/checks.h"
#include "fuzz/memory_platform.h"
#include "input/control_maps.h"
#include "options/options.h"
#include "options/voice_settings.h"
#include "state/game_state.h"
#include "text/settings_file.h"

namespace vorn {
namespace {

constexpr int InputState::*kButtons[] = {&InputState::joyMapSpeedometer, &InputState::joyMapTrackPosition,
                                         &InputState::joyMapStartEngine, &InputState::joyMapPitRoad,
                                         &InputState::joyMapSayGear,     &InputState::joyMapSayLap,
                                         &InputState::joyMapHorn,        &InputState::joyMapElapsedTime,
                                         &InputState::joyMapUpShift,     &InputState::joyMapDownShift};
constexpr int InputState::*kKeys[] = {
    &InputState::keyMapSpeedometer, &InputState::keyMapTrackPosition, &InputState::keyMapStartEngine,
    &InputState::keyMapSayLap,      &InputState::keyMapPitRoad,       &InputState::keyMapElapsedTime,
    &InputState::keyMapSteerLeft,   &InputState::keyMapSteerRight,    &InputState::keyMapUpShift,
    &InputState::keyMapDownShift,   &InputState::keyMapGas,           &InputState::keyMapBrake,
    &InputState::keyMapEnter,       &InputState::keyMapHorn,          &InputState::keyMapSayGear};

void readControlMaps(GameState& g, MemoryFiles& files) {
  jhk(g);
  getJoyCFG(g);
  getKeyCFG(g);
  for (const auto button : kButtons) require(g.*button >= 0 && g.*button <= 31, "a button is 0 to 31");
  for (const auto key : kKeys) require(g.*key >= 0 && g.*key <= 255, "a key code is 0 to 255");

  g.startUpMessages.clear();
  getJoyCFG(g);
  getKeyCFG(g);
  require(g.startUpMessages.empty(), "a map that was replaced is in order");
  printJoyCFG(g);
  printKeyCFG(g);
  require(readSettings(files.contents.at("vorn1joy.cfg")).size() == 12, "a joystick map has 12 lines");
  require(readSettings(files.contents.at("vorn1key.cfg")).size() == 15, "a keyboard map has 15 lines");
}

void readOptions(GameState& g, MemoryFiles& files) {
  getgops(g);
  printgops(g);
  const std::string written = files.contents.at("vorn1ops.cfg");
  getgops(g);
  printgops(g);
  require(files.contents.at("vorn1ops.cfg") == written, "options are read as they were written");
}

void readVoice(GameState& g, MemoryFiles& files) {
  getCFG(g);
  printCFG(g);
  const std::string written = files.contents.at("vorn1voc.cfg");
  getCFG(g);
  printCFG(g);
  require(files.contents.at("vorn1voc.cfg") == written, "a voice is read as it was written");
}

}  // namespace
}  // namespace vorn

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  MemoryPlatform platform;
  for (const char* name : {"vorn1joy.cfg", "vorn1key.cfg", "vorn1ops.cfg", "vorn1voc.cfg"}) {
    platform.inMemory.contents[name] = bytesOf(data, size);
  }
  GameState g(platform);
  readControlMaps(g, platform.inMemory);
  readOptions(g, platform.inMemory);
  readVoice(g, platform.inMemory);
  return 0;
}
