#include "codriver/ghost_menu.h"

#include <algorithm>

#include "codriver/entries.h"
#include "codriver/ghost_store.h"
#include "speech/speech.h"
#include "state/track_names.h"

namespace vorn {
namespace {

void haunt(Cabin& cabin, bool byFriend) {
  cabin.settings.racesFriend = byFriend ? 1 : 0;
  cabin.settings.turn(AidKind::kGhost, true);
  say2(cabin.game, byFriend ? " The ghost is on, and drives a friend's laps. "
                            : " The ghost is on, and drives your own best laps. ");
}

void layGhost(Cabin& cabin) {
  cabin.settings.turn(AidKind::kGhost, false);
  say2(cabin.game, " The ghost is off. ");
}

/// The files of the folder that a friend may have sent: those that the game has not named itself.
std::vector<std::string> sentFiles(Files& files) {
  const std::vector<std::string> own = files.list("vorn1", kGhostSuffix);
  std::vector<std::string> names = files.list("", kGhostSuffix);
  std::erase_if(names, [&](const std::string& name) { return std::count(own.begin(), own.end(), name) > 0; });
  return names;
}

void takeInFile(Cabin& cabin) {
  const std::vector<std::string> names = sentFiles(cabin.files);
  if (names.empty()) {
    say2(cabin.game,
         " There is none. Put the file that a friend has sent into the folder of the game, under a name that "
         "ends with dot ghost and does not begin with vorn 1. ");
    return;
  }
  offerEntries(cabin.game, " Which file? ", names, [&](std::size_t chosen) {
    std::string bytes;
    carryOn([&] { bytes = cabin.files.read(names[chosen]); });
    say2(cabin.game, importGhosts(cabin.files, bytes).word);
  });
}

void tellOfOwnFiles(Cabin& cabin) {
  std::string text;
  for (int track = 1; track <= kTracks; ++track) {
    const auto name = cabin.files.find(ghostFileName(track));
    if (name) text += *name + ", " + kTrackNames.at(static_cast<std::size_t>(track - 1)).spoken + ". ";
  }
  say2(cabin.game, text.empty()
                       ? " No lap is kept yet: laps are kept while the ghost or the lap times are on. "
                       : " Send one of these files from the folder of the game: " + text);
}

struct Choice {
  const char* text;
  void (*make)(Cabin&);
};

constexpr Choice kChoices[] = {
    {" Race your own best laps. ", [](Cabin& cabin) { haunt(cabin, false); }},
    {" Race a friend's laps. ", [](Cabin& cabin) { haunt(cabin, true); }},
    {" Race no ghost. ", layGhost},
    {" Take in the file of a friend. ", takeInFile},
    {" Which files to send to a friend. ", tellOfOwnFiles},
};

}  // namespace

void arrangeGhost(Cabin& cabin) {
  std::vector<std::string> texts;
  for (const Choice& choice : kChoices) texts.emplace_back(choice.text);
  offerEntries(cabin.game, " Ghost. ", texts, [&](std::size_t chosen) { kChoices[chosen].make(cabin); });
}

}  // namespace vorn
