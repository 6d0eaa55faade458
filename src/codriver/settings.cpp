#include "codriver/settings.h"

#include <algorithm>
#include <vector>

#include "text/settings_file.h"

namespace vorn {
namespace {

constexpr int kVersion = 1;

struct Setting {
  int AidSettings::*field;
  int lowest, highest;
};

/// In the order of the file, behind the version and the aids.
constexpr Setting kSettings[] = {
    {&AidSettings::callStyle, kCallTones, kCallBoth},
    {&AidSettings::callAhead, kShortestAhead, kLongestAhead},
    {&AidSettings::engineLevel, kQuietestLevel, 0},
    {&AidSettings::cueLevel, kQuietestLevel, 0},
    {&AidSettings::wallLevel, kQuietestLevel, 0},
    {&AidSettings::carLevel, kQuietestLevel, 0},
    {&AidSettings::codriverLevel, kQuietestLevel, 0},
    {&AidSettings::width, 0, 100},
    {&AidSettings::balance, -kFullBalance, kFullBalance},
    {&AidSettings::swapsEars, 0, 1},
    {&AidSettings::hearsInOne, 0, 1},
    {&AidSettings::racesFriend, 0, 1},
};

/// The whole number in `value`, where it is one within the range.
std::optional<int> wholeNumber(const std::optional<double>& value, int lowest, int highest) {
  if (!value || !(*value >= lowest && *value <= highest)) return std::nullopt;
  const int whole = static_cast<int>(*value);
  return whole == *value ? std::optional<int>(whole) : std::nullopt;
}

}  // namespace

std::optional<AidSet> aidsNamed(std::string_view list) {
  AidSet aids{};
  if (list == "none") return aids;
  for (std::size_t begin = 0; begin <= list.size();) {
    const std::size_t end = std::min(list.find(',', begin), list.size());
    const std::string_view word = list.substr(begin, end - begin);
    const auto* const name = std::find_if(kAidNames.begin(), kAidNames.end(),
                                          [&](const AidName& aid) { return aid.word == word; });
    if (name == kAidNames.end()) return std::nullopt;
    aids[static_cast<std::size_t>(name - kAidNames.begin())] = 1;
    begin = end + 1;
  }
  return aids;
}

std::string aidList(const AidSet& aids) {
  std::string list;
  for (std::size_t i = 0; i < kAidKinds; ++i) {
    if (aids[i] != 0) list += (list.empty() ? "" : ",") + std::string(kAidNames[i].word);
  }
  return list.empty() ? "none" : list;
}

std::string aidFileText(const AidSettings& settings) {
  std::vector<int> values{kVersion};
  values.insert(values.end(), settings.aids.begin(), settings.aids.end());
  for (const Setting& setting : kSettings) values.push_back(settings.*setting.field);
  return settingsText(values);
}

std::optional<AidSettings> aidsInFile(std::string_view text) {
  const auto values = readSettings(text);
  if (values.size() != 1 + kAidKinds + std::size(kSettings) || values[0] != kVersion) return std::nullopt;
  AidSettings settings;
  std::size_t next = 1;
  for (int& aid : settings.aids) {
    const auto value = wholeNumber(values[next++], 0, 1);
    if (!value) return std::nullopt;
    aid = *value;
  }
  for (const Setting& setting : kSettings) {
    const auto value = wholeNumber(values[next++], setting.lowest, setting.highest);
    if (!value) return std::nullopt;
    settings.*setting.field = *value;
  }
  return settings;
}

}  // namespace vorn
