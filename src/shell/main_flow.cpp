#include "shell/main_flow.h"

#include "clock/waits.h"
#include "input/control_maps.h"
#include "input/events.h"
#include "input/wizards.h"
#include "options/instructions.h"
#include "options/options.h"
#include "options/voice_settings.h"
#include "race/announcements.h"
#include "records/log.h"
#include "records/reading.h"
#include "records/records.h"
#include "shell/menus.h"
#include "sound/loading.h"
#include "sound/playback.h"
#include "speech/losses.h"
#include "speech/speech.h"
#include "state/track_names.h"
#include "text/numbers.h"
#include "tracks/catalogue.h"
#include "tracks/runner.h"

namespace vorn {
namespace {

/// Where the program goes next.
enum class Place { kMainMenu, kTrackMenu, kRace, kPostRaceMenu, kExit };

using Procedure = void (*)(GameState&);

/// The main menu in its order. The first entry leaves the game and the last one
/// starts it: neither has a procedure.
struct MainMenuItem {
  const char* text;
  Procedure run;
};

constexpr MainMenuItem kMainMenu[] = {
    {" Exit Game. ", nullptr},
    {" Reed Instructions. ", readins},
    {" reed track descriptions ", reades},
    {" reed log file ", readlog},
    {" delete log file ", delog},
    {" reed records file ", readrecords},
    {" reset records ", resrec},
    {" change voice ", changevoice},
    {" adjust rate of speech ", adjrate},
    {" adjust volume ", adjvol},
    {" Check speakers ", checkspeakers},
    {" reed default joystick configuration ", readjoy},
    {" configure joystick ", confjoy},
    {" Reset joystick configuration ", ReSetJoy},
    {" reed default key board configuration ", readKB},
    {" configure key board ", confkey},
    {" Reset key board configuration ", resetkey},
    {" change game options ", congops},
    {" change car engine sound ", cheng},
    {" Start Game. ", nullptr},
};
constexpr int kExitGame = 1;
constexpr int kStartGame = static_cast<int>(std::size(kMainMenu));

constexpr int kGoToMainMenu = kTracks + 1;

Menu mainMenu() {
  Menu menu;
  menu.openingPrompt = " Select. Exit Game. ";
  for (const MainMenuItem& item : kMainMenu) menu.entries.push_back(item.text);
  return menu;
}

Menu trackMenu(const GameState& g) {
  return {.openingPrompt = " Select the track you wish to run, Maple Leaf Try Oval ",
          .entries = {g.trackNames.begin() + 1, g.trackNames.end()},
          .pauseBeforeEntry = g.joystickPresent == 1 ? 0.3 : 0,
          .escapeLeaves = true};
}

/// Loads the sounds, and asks once a run what drives the car.
void prepareGame(GameState& g) {
  setwaves(g);
  dyke(g, 0.3);
  if (g.joystickPresent == 1 && g.inputDevice == kNoDevice) {
    const Menu menu{.openingPrompt = " Select, joystick ", .entries = {" joystick ", " key board "}};
    int cursor = 0;
    openMenu(g, menu, cursor);
    g.inputDevice = offerMenu(g, menu, cursor);
  }
}

Place runMainMenu(GameState& g) {
  const Menu menu = mainMenu();
  int cursor = 0;
  openMenu(g, menu, cursor);
  for (;;) {
    const int chosen = offerMenu(g, menu, cursor);
    if (chosen == kExitGame) return Place::kExit;
    if (chosen == kStartGame) {
      prepareGame(g);
      return Place::kTrackMenu;
    }
    kMainMenu[chosen - 1].run(g);
    sayLosses(g);
  }
}

Place runTrackMenu(GameState& g) {
  clk(g);
  dyke(g, 0.3);
  const Menu menu = trackMenu(g);
  openMenu(g, menu, g.trackChoice);
  const int chosen = offerMenu(g, menu, g.trackChoice);
  if (chosen == kNoEntry || chosen == kGoToMainMenu) return Place::kMainMenu;
  return chosen > kGoToMainMenu ? Place::kExit : Place::kRace;
}

void driveRace(GameState& g) {
  stopspeech(g);
  clk(g);
  g.topGearUnlimited = 0;
  runRace(g, *allTracks()[g.trackChoice - 1]);
  if (g.inputDevice == kKeyboard) {
    // A race by keyboard writes its keys into the controller's fields; in a menu
    // they would read as a stick that is held.
    g.joyGasBrake = 0;
    g.joySteering = 0;
  }
}

std::string fuelSentence(const GameState& g) {
  return " You finished the race with " + numberText(roundDecimals(g.fuel, 2)) + " gallons of fuel. ";
}

void sayResults(GameState& g, const std::string& fuel) {
  say2(g, g.raceTimeText + g.recordText + fuel);
}

void keepRecord(GameState& g) {
  writeRecord(g);
  WriteNewRecordFile(g);
}

void nameNewRecord(GameState& g) {
  try {
    GetNewRecName(g);
  } catch (const WindowClosed&) {
    keepRecord(g);  // under the name as far as it has been typed: the log tells of it already
    throw;
  }
  keepRecord(g);
}

/// Runs the race and, unless it was given up, its results; leaves the fuel sentence in `fuel`.
Place runRaceAndResults(GameState& g, std::string& fuel) {
  driveRace(g);
  stopall(g);
  if (g.escapePressed == 1) {
    g.escapePressed = 0;
    return Place::kMainMenu;
  }
  SayRaceTime(g);
  sayrecord(g);
  dyke(g, 0.2);
  fuel = fuelSentence(g);
  appendToLog(g, {fuel});
  sayResults(g, fuel);
  sayLosses(g);
  clk(g);
  dy(g, 0.2);
  clk(g);
  if (isNewRecord(g)) nameNewRecord(g);
  sayLosses(g);
  return Place::kPostRaceMenu;
}

Place runPostRaceMenu(GameState& g, const std::string& fuel) {
  dyke(g, 0.3);
  const Menu menu{.openingPrompt = " Select, repeat race time ",
                  .entries = {" repeat race time ", " Run the same track again ", " Run a different track ",
                              " Go to main menu ", " Exit game "}};
  constexpr int kRepeat = 1;
  constexpr Place kPlaces[] = {Place::kRace, Place::kTrackMenu, Place::kMainMenu, Place::kExit};
  int cursor = 0;
  openMenu(g, menu, cursor);
  for (;;) {
    const int chosen = offerMenu(g, menu, cursor);
    if (chosen != kRepeat) return kPlaces[chosen - kRepeat - 1];
    sayResults(g, fuel);
  }
}

}  // namespace

void runMainFlow(GameState& g) {
  std::string fuel;
  Place place = Place::kMainMenu;
  while (place != Place::kExit) {
    switch (place) {
      case Place::kMainMenu:
        place = runMainMenu(g);
        break;
      case Place::kTrackMenu:
        place = runTrackMenu(g);
        break;
      case Place::kRace:
        place = runRaceAndResults(g, fuel);
        break;
      case Place::kPostRaceMenu:
        place = runPostRaceMenu(g, fuel);
        break;
      case Place::kExit:
        break;
    }
  }
}

}  // namespace vorn
