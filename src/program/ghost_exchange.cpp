#include "program/ghost_exchange.h"

#include <fstream>
#include <iterator>

#include "codriver/ghost_store.h"
#include "platform/common/folder_files.h"
#include "platform/errors.h"
#include "program/game_folder.h"
#include "program/process.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr int kDone = 0, kFailed = 1;

int fail(const fs::path& file, const std::string& why) {
  tellProblem(file.string() + ": " + why);
  return kFailed;
}

/// Without the blanks around it.
std::string asALine(const std::string& spoken) {
  const std::size_t first = spoken.find_first_not_of(' ');
  return spoken.substr(first, spoken.find_last_not_of(' ') - first + 1);
}

}  // namespace

int importGhost(const fs::path& folder, const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream || fs::is_directory(file)) return fail(file, "it cannot be read");
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  FolderFiles files(gameFolder(folder).path);
  const GhostImport taken = importGhosts(files, bytes);
  if (!taken.isDone) return fail(file, asALine(taken.word));
  tellAnswer(asALine(taken.word));
  return kDone;
}

int exportGhost(const fs::path& folder, int track, const fs::path& file) {
  FolderFiles files(gameFolder(folder).path);
  const KeptGhosts kept = keptGhosts(files, track);
  if (!kept.word.empty()) return fail(ghostFileName(track), asALine(kept.word));
  if (kept.ghosts.empty()) return fail(ghostFileName(track), "no lap is kept of this track");
  if (fs::exists(file)) return fail(file, "there is such a file already");
  std::ofstream stream(file, std::ios::binary);
  stream << encodeGhosts({.track = track, .ghosts = kept.ghosts}) << std::flush;
  return stream ? kDone : fail(file, "it cannot be written");
}

}  // namespace vorn
