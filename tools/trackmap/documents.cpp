#include "documents.h"

#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <vector>

#include "picture.h"
#include "road.h"
#include "tracks/catalogue.h"

namespace vorn::trackmap {
namespace {

namespace fs = std::filesystem;

constexpr const char* kDocument = "tracks.md";
constexpr const char* kEndMark = "<!-- end -->";

std::optional<std::string> contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string pictureName(const Track& track) {
  return "tracks/" + fileWord(track) + ".svg";
}

/// Puts `text` between the mark of the track and the next end mark.
void renewBetweenMarks(std::string& document, const Track& track, const std::string& text) {
  const std::string mark = "<!-- trackmap " + fileWord(track) + " -->";
  const std::size_t begin = document.find(mark);
  const std::size_t end = document.find(kEndMark, begin);
  if (begin == std::string::npos || end == std::string::npos) {
    throw std::runtime_error(std::string(kDocument) + " lacks the mark " + mark + " or its end");
  }
  const std::size_t first = begin + mark.size();
  document.replace(first, end - first, text);
}

}  // namespace

std::map<std::string, std::string> wantedFiles(const fs::path& folder) {
  std::optional<std::string> document = contentOf(folder / kDocument);
  if (!document) throw std::runtime_error("cannot read " + (folder / kDocument).string());
  std::map<std::string, std::string> files;
  for (const Track* track : allTracks()) {
    files[pictureName(*track)] = pictureOf(*track);
    renewBetweenMarks(*document, *track,
                      "\n" + summaryOf(*track) + "\n\n![" + track->name + "](" + pictureName(*track) +
                          ")\n\n" + tableOf(*track));
  }
  files[kDocument] = *document;
  return files;
}

std::vector<std::string> outdatedFiles(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& [name, content] : wantedFiles(folder)) {
    if (contentOf(folder / name) != content) names.push_back(name);
  }
  return names;
}

void renewFiles(const fs::path& folder) {
  fs::create_directories(folder / "tracks");
  for (const auto& [name, content] : wantedFiles(folder)) {
    std::ofstream file(folder / name, std::ios::binary);
    file << content;
    if (!file.flush()) throw std::runtime_error("cannot write " + (folder / name).string());
  }
}

}  // namespace vorn::trackmap
