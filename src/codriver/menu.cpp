#include "codriver/menu.h"

#include <array>

#include "codriver/controller_watch.h"
#include "codriver/ghost_menu.h"
#include "codriver/lesson_room.h"
#include "codriver/preview.h"
#include "codriver/settings_menu.h"
#include "codriver/sound_tour.h"
#include "shell/menus.h"
#include "speech/speech.h"

namespace vorn {
namespace {

/// The name and, in a sentence, what it does; the procedure waits.
struct Entry {
  const char* text;
  void (*run)(Cabin&);
};

void sayKeys(Cabin& cabin) {
  say2(cabin.game,
       " In a race: F1 where you are, F2 which aids are on, F3 turn calls, F4 slider, "
       "F5 shift and brake ticks, F6 warnings, F7 lap times, F8 ghost, F9 last and best lap. ");
}

constexpr std::array kEntries{
    Entry{" Learn the sounds. Every sound of the game, with what it means. ",
          [](Cabin& cabin) { takeSoundTour(cabin.game); }},
    Entry{" Lessons. Six short ones, on real tracks. ", giveLessons},
    Entry{" Preview a track. A lap is driven for you, and each part of it is told. ", previewTracks},
    Entry{" Aids. Switch on what helps you in a race. ", chooseAids},
    Entry{" Ghost. Race against a lap of your own, or of a friend. ", arrangeGhost},
    Entry{" Loudness. How loud each kind of sound is, and in which ear. ", chooseLoudness},
    Entry{" Controller test. Hear what the game takes each axis and button for. ", testController},
    Entry{" Keys. What the function keys do. ", sayKeys},
};

}  // namespace

void runCodriverMenu(Cabin& cabin) {
  Menu menu{.escapeLeaves = true};
  for (const Entry& entry : kEntries) menu.entries.push_back(entry.text);
  menu.openingPrompt = std::string(" Co-driver. ") + kEntries.front().text;
  int cursor = 0;
  openMenu(cabin.game, menu, cursor);
  for (int chosen = 0; (chosen = offerMenu(cabin.game, menu, cursor)) != kNoEntry;) {
    kEntries[static_cast<std::size_t>(chosen - 1)].run(cabin);
  }
}

}  // namespace vorn
