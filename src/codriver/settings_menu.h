/// The co-driver's settings as menus: what can be chosen of each, and the choosing.
#pragma once

#include <string>
#include <vector>

#include "codriver/menu.h"
#include "codriver/settings.h"

namespace vorn {

/// A setting as the player chooses it.
struct Choice {
  int value;
  std::string text;  ///< without blanks around it
};
struct SettingRow {
  const char* name;
  int& field;
  std::vector<Choice> choices;
};
/// All that can be chosen of loudness and ears.
std::vector<SettingRow> loudnessRows(AidSettings& settings);
/// The aids, and how turns are called.
std::vector<SettingRow> aidRows(AidSettings& settings);
/// The choice that stands nearest to the field's value, from 0.
std::size_t currentChoice(const SettingRow& row);

/// The two menus; they wait.
void chooseAids(Cabin& cabin);
void chooseLoudness(Cabin& cabin);

}  // namespace vorn
