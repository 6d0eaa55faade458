#include "text/settings_file.h"

#include <cmath>
#include <limits>

#include "text/numbers.h"
#include "text/reals.h"

namespace vorn {
namespace {

/// Cuts `bytes` at line ends, and at commas if asked; the end of the file after a delimiter opens no further
/// item.
std::vector<std::string> cut(std::string_view bytes, bool atCommas) {
  std::vector<std::string> items;
  std::string item;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const char c = bytes[i];
    if (c != '\r' && c != '\n' && !(atCommas && c == ',')) {
      item += c;
      if (i + 1 < bytes.size()) continue;
    }
    if (c == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
    items.push_back(item);
    item.clear();
  }
  return items;
}

std::optional<double> number(std::string_view item) {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t first = item.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  item = item.substr(first, item.find_last_not_of(kBlanks) - first + 1);
  if (item.front() == '+') item.remove_prefix(1);
  const auto parsed = parseReal(item);
  if (!parsed || parsed->length != item.size()) return {};
  return parsed->value;
}

}  // namespace

std::vector<std::string> textLines(std::string_view bytes) {
  return cut(bytes, false);
}

std::string settingsText(const std::vector<int>& values) {
  std::string text;
  for (const int value : values) text += std::to_string(value) + "\r\n";
  return text;
}

std::vector<std::optional<double>> readSettings(std::string_view bytes) {
  std::vector<std::optional<double>> values;
  for (const std::string& item : cut(bytes, true)) values.push_back(number(item));
  return values;
}

bool readSettingsInto(std::string_view bytes, const std::vector<int*>& fields) {
  const auto values = readSettings(bytes);
  bool allNumbers = true;
  for (std::size_t i = 0; i < fields.size() && i < values.size(); ++i) {
    if (!values[i]) {
      allNumbers = false;
      continue;
    }
    const bool fits = std::fabs(*values[i]) <= std::numeric_limits<int>::max();
    *fields[i] = fits ? roundToInt(*values[i]) : 0;
  }
  return allNumbers;
}

}  // namespace vorn
