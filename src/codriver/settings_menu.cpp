#include "codriver/settings_menu.h"

#include <cstdlib>

#include "shell/menus.h"
#include "speech/speech.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr double kDecibel = 100;  // in hundredths
constexpr int kStep = 300;
constexpr int kAheadStep = 5;  // tenths of a second

std::vector<Choice> offAndOn() {
  return {{0, "off"}, {1, "on"}};
}

std::vector<Choice> levels() {
  std::vector<Choice> choices{{0, "as loud as the game"}};
  for (int level = -kStep; level >= kQuietestLevel; level -= kStep) {
    choices.push_back({level, numberText(-level / kDecibel) + " decibels quieter"});
  }
  return choices;
}

std::vector<Choice> widths() {
  std::vector<Choice> choices;
  for (const int width : {100, 75, 50, 25, 0}) choices.push_back({width, numberText(width) + " percent"});
  return choices;
}

std::vector<Choice> balances() {
  std::vector<Choice> choices;
  for (int balance = -kFullBalance; balance <= kFullBalance; balance += kStep) {
    const std::string side = balance < 0 ? " decibels to the left" : " decibels to the right";
    choices.push_back({balance, balance == 0 ? "even" : numberText(std::abs(balance) / kDecibel) + side});
  }
  return choices;
}

std::vector<Choice> timesAhead() {
  std::vector<Choice> choices;
  for (int tenths = kShortestAhead; tenths <= kLongestAhead; tenths += kAheadStep) {
    choices.push_back({tenths, numberText(tenths / 10.0) + " seconds"});
  }
  return choices;
}

std::string textOf(const SettingRow& row) {
  return " " + std::string(row.name) + ", " + row.choices[currentChoice(row)].text + ". ";
}

/// Lets one of several be chosen; Escape leaves it as it is.
void choose(GameState& g, SettingRow& row) {
  Menu menu{.escapeLeaves = true};
  for (const Choice& choice : row.choices) menu.entries.push_back(" " + choice.text + " ");
  int cursor = static_cast<int>(currentChoice(row)) + 1;
  menu.openingPrompt = textOf(row);
  say2(g, menu.openingPrompt);
  const int chosen = offerMenu(g, menu, cursor);
  if (chosen != kNoEntry) row.field = row.choices[static_cast<std::size_t>(chosen - 1)].value;
}

/// Offers the rows until the player leaves. Where there are two choices Enter takes the other one.
void offerRows(GameState& g, const std::string& title, std::vector<SettingRow> rows) {
  int cursor = 1;
  say2(g, title + textOf(rows.front()));
  for (;;) {
    Menu menu{.openingPrompt = title + textOf(rows.front()), .escapeLeaves = true};
    for (const SettingRow& row : rows) menu.entries.push_back(textOf(row));
    const int chosen = offerMenu(g, menu, cursor);
    if (chosen == kNoEntry) return;
    SettingRow& row = rows[static_cast<std::size_t>(chosen - 1)];
    if (row.choices.size() == 2) {
      row.field = row.choices[1 - currentChoice(row)].value;
    } else {
      choose(g, row);
    }
    say2(g, textOf(row));
  }
}

}  // namespace

std::vector<SettingRow> aidRows(AidSettings& settings) {
  std::vector<SettingRow> rows;
  for (std::size_t i = 0; i < kAidKinds; ++i) {
    rows.push_back({kAidNames[i].spoken, settings.aids[i], offAndOn()});
  }
  rows.push_back({"turns are called by",
                  settings.callStyle,
                  {{kCallTones, "two tones"}, {kCallNotes, "words"}, {kCallBoth, "tones and words"}}});
  rows.push_back({"turns are called ahead by", settings.callAhead, timesAhead()});
  return rows;
}

std::vector<SettingRow> loudnessRows(AidSettings& settings) {
  return {{"engine", settings.engineLevel, levels()},
          {"cues", settings.cueLevel, levels()},
          {"walls", settings.wallLevel, levels()},
          {"everything else of the car", settings.carLevel, levels()},
          {"tones of the co-driver", settings.codriverLevel, levels()},
          {"width of the stereo", settings.width, widths()},
          {"balance", settings.balance, balances()},
          {"swapped ears", settings.swapsEars, offAndOn()},
          {"everything for one ear", settings.hearsInOne, offAndOn()}};
}

std::size_t currentChoice(const SettingRow& row) {
  std::size_t nearest = 0;
  for (std::size_t i = 1; i < row.choices.size(); ++i) {
    const auto distance = [&](std::size_t choice) { return std::abs(row.choices[choice].value - row.field); };
    if (distance(i) < distance(nearest)) nearest = i;
  }
  return nearest;
}

void chooseAids(Cabin& cabin) {
  offerRows(cabin.game, " Aids. ", aidRows(cabin.settings));
}

void chooseLoudness(Cabin& cabin) {
  offerRows(cabin.game, " Loudness. ", loudnessRows(cabin.settings));
}

}  // namespace vorn
