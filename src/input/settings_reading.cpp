#include "input/settings_reading.h"

#include <algorithm>

#include "text/settings_file.h"

namespace vorn {
namespace {

constexpr const char* kNotRead = " Sorry, but some settings could not be read. ";

void noteNotRead(InputState& in) {
  auto& messages = in.startUpMessages;
  if (std::find(messages.begin(), messages.end(), kNotRead) == messages.end()) messages.push_back(kNotRead);
}

}  // namespace

std::optional<std::string> settingsFileText(GameState& g, const char* name) {
  if (!g.platform.files().find(name)) return {};
  std::optional<std::string> text;
  if (!carryOn([&] { text = g.platform.files().read(name); })) noteNotRead(g);
  return text;
}

void loadSettings(GameState& g, const char* name, const std::vector<int*>& fields) {
  const auto text = settingsFileText(g, name);
  if (text && !readSettingsInto(*text, fields)) noteNotRead(g);
}

}  // namespace vorn
