#include "program/game_folder.h"

#include <algorithm>
#include <iostream>
#include <string>

#include "program/installation.h"
#include "sound/catalogue.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

bool holdsSounds(const fs::path& folder) {
  const auto files = soundCatalogue();
  return std::all_of(files.begin(), files.end(), [&](const CatalogueEntry& entry) {
    std::error_code error;
    return fs::is_regular_file(folder / soundFileName(entry.name), error);
  });
}

// Copies the installed sound to `folder` where it is missing there, has another length or is older.
// The copy keeps the date, so that a later version's sound counts as newer.
void copyInstalled(const std::string& name, const fs::path& folder) {
  const fs::path installed = installedSounds() / name;
  const fs::path own = folder / name;
  std::error_code error;
  if (!fs::is_regular_file(installed, error)) return;
  const auto date = fs::last_write_time(installed, error);
  const bool isGood = fs::is_regular_file(own, error) &&
                      fs::file_size(own, error) == fs::file_size(installed, error) &&
                      fs::last_write_time(own, error) >= date;
  if (isGood) return;
  if (fs::copy_file(installed, own, fs::copy_options::overwrite_existing, error)) {
    fs::last_write_time(own, date, error);
  } else {
    std::cerr << "The sound " << name << " could not be copied to " << folder.string() << ": "
              << error.message() << std::endl;
  }
}

}  // namespace

GameFolder gameFolder(const fs::path& asked) {
  if (!asked.empty()) return {asked, true};
  const fs::path own = playersData() / "vorn1";
  std::error_code error;
  const fs::path current = fs::current_path(error);
  if (!error && holdsSounds(current)) return {current, fs::equivalent(current, own, error)};
  fs::create_directories(own);
  return {own, true};
}

void fillWithSounds(const fs::path& folder) {
  for (const CatalogueEntry& entry : soundCatalogue()) copyInstalled(soundFileName(entry.name), folder);
  if (holdsSounds(folder)) return;
  makeSounds(folder);
}

}  // namespace vorn
