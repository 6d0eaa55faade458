#include "options/options.h"

#include "clock/waits.h"
#include "input/choosers.h"
#include "input/events.h"
#include "input/settings_reading.h"
#include "sound/loading.h"
#include "sound/playback.h"
#include "speech/losses.h"
#include "speech/speech.h"
#include "text/settings_file.h"

namespace vorn {
namespace {

constexpr const char* kOptionsFile = "vorn1ops.cfg";

/// The options in the order of their file.
constexpr int OptionsState::*kOptions[] = {
    &OptionsState::wallSound,     &OptionsState::autoSpeedometer, &OptionsState::autoGearAnnounce,
    &OptionsState::pitRoadSnacks, &OptionsState::trackLightPolls, &OptionsState::engineSound,
};

struct Switch {
  const char* prompt;
  int OptionsState::*field;
};

constexpr Switch kSwitches[] = {
    {" select, automatic speedometer, on ", &OptionsState::autoSpeedometer},
    {" select, automatic gear announce, on ", &OptionsState::autoGearAnnounce},
    {" select, pit road snacks, on ", &OptionsState::pitRoadSnacks},
    {" select, track light polls, on ", &OptionsState::trackLightPolls},
};

void playWallSound(GameState& g) {
  play2(g, wallFile(g.wallSound));
  dyke(g, 1.75);
  stopOneShot(g);
}

void chooseWallSound(GameState& g) {
  do {
    int choice = 1;
    chooseFromList(g, {.prompt = " select, wall sound, crowd ", .entries = {" crowd ", " nature ", " wind "}},
                   choice);
    dyke(g, 0.3);
    g.wallSound = choice;
    playWallSound(g);
  } while (!askYesNo(g, {.prompt = " Is this the sound that you wish to use for the wall sound? yes "}));
}

void chooseOnOrOff(GameState& g, const Switch& option) {
  int choice = kOn;
  chooseFromList(g, {.prompt = option.prompt, .entries = {" on ", " off "}}, choice);
  g.*option.field = choice;
}

void playEngineSound(GameState& g) {
  loadSlot(g, g.engineBuffer, engineFile(g.engineSound));
  g.engineBuffer->Play(SoundBuffer::kOnce);
  dyke(g, 0.5);
  waitWhilePlaying(g.platform, g.engineBuffer);
  dyke(g, 0.2);
}

}  // namespace

void getgops(GameState& g) {
  std::vector<int*> fields;
  for (const auto option : kOptions) fields.push_back(&(g.*option));
  loadSettings(g, kOptionsFile, fields);
}

void printgops(GameState& g) {
  std::vector<int> values;
  for (const auto option : kOptions) values.push_back(g.*option);
  keep(g, Kept::kSettings, [&] { g.platform.files().write(kOptionsFile, settingsText(values)); });
}

void congops(GameState& g) {
  clk(g);
  chooseWallSound(g);
  for (const Switch& option : kSwitches) chooseOnOrOff(g, option);
  printgops(g);
}

void cheng(GameState& g) {
  g.engineSound = 1;
  const ListChoice question{
      .prompt = " select, ",
      .entries = {" car engine number 1 ", " car engine number 2 ", " car engine number 3 ",
                  " car engine number 4 ", " car engine number 5 ", " car engine number 6 "},
      .keepsChoice = true};
  do {
    chooseFromList(g, question, g.engineSound);
    playEngineSound(g);
  } while (!askYesNo(g, {.prompt = " Is this the engine sound that you wish to use? yes "}));
  printgops(g);
}

}  // namespace vorn
