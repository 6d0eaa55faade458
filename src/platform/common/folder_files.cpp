#include "platform/common/folder_files.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <utility>

#include "platform/common/disk_file.h"
#include "platform/common/file_names.h"
#include "platform/common/utf8_path.h"
#include "platform/errors.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

/// What is longer has not been written by the game, and is read no further.
constexpr std::size_t kMostBytes = std::size_t{64} << 10;      ///< of settings and records
constexpr std::size_t kMostTextBytes = std::size_t{16} << 20;  ///< of the log and the summary
constexpr std::size_t kMostSoundBytes = std::size_t{256} << 20;

std::size_t mostBytesOf(const std::string& name) {
  return lowerCased(name).ends_with(".txt") ? kMostTextBytes : kMostBytes;
}

bool isRegular(const fs::path& path) {
  std::error_code ignored;
  return fs::is_regular_file(path, ignored);
}

/// Empty for a name that is no text, which some disks have: it is nobody's of ours.
std::string nameOf(const fs::path& path) {
  try {
    return path.filename().string();
  } catch (const fs::filesystem_error&) {
    return "";
  }
}

/// The names of the regular files of `folder` that `matches` accepts, in no
/// order; none where the folder cannot be read.
template <typename Matches>
std::vector<std::string> regularFiles(const fs::path& folder, Matches matches) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    std::string name = nameOf(entry->path());
    if (matches(name) && isRegular(entry->path())) names.push_back(std::move(name));
  }
  return names;
}

constexpr std::string_view kTemporaryMark = ".new-";
constexpr std::size_t kTemporaryDigits = 16;
constexpr std::string_view kHexadecimal = "0123456789abcdef";

/// Hidden name of a file that is written in the place of `name`; nobody can foresee it.
std::string temporaryName(const std::string& name) {
  std::random_device random;
  std::string text = "." + name + std::string(kTemporaryMark);
  for (std::size_t i = 0; i < kTemporaryDigits; ++i) text += kHexadecimal[random() % kHexadecimal.size()];
  return text;
}

bool isTemporaryName(std::string_view name) {
  if (name.size() < 1 + kTemporaryMark.size() + kTemporaryDigits || name.front() != '.') return false;
  const std::string_view digits = name.substr(name.size() - kTemporaryDigits);
  name.remove_suffix(kTemporaryDigits);
  return name.ends_with(kTemporaryMark) && digits.find_first_not_of(kHexadecimal) == std::string_view::npos;
}

/// Removes what earlier runs left when they were killed in the middle of a write.
/// Whatever is younger than a day may still be written by another one.
void removeLeftovers(const fs::path& folder) {
  const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(24);
  for (const std::string& leftover : regularFiles(folder, isTemporaryName)) {
    std::error_code error;
    const auto written = fs::last_write_time(folder / leftover, error);
    if (!error && written < longAgo) fs::remove(folder / leftover, error);
  }
}

}  // namespace

FolderFiles::FolderFiles(fs::path folder, Observer observer)
    : folder_(std::move(folder)), use_(folder_), observer_(std::move(observer)) {}

std::optional<std::string> FolderFiles::find(const std::string& name) {
  if (!isFileName(name)) return std::nullopt;
  if (standsAs(folder_, name)) return name;
  const std::string wanted = lowerCased(name);
  const auto found = regularFiles(folder_, [&](const std::string& s) { return lowerCased(s) == wanted; });
  if (found.empty()) return std::nullopt;
  return *std::min_element(found.begin(), found.end());
}

std::vector<std::string> FolderFiles::list(const std::string& prefix, const std::string& suffix) {
  return namesBetween(regularFiles(folder_, [](const std::string&) { return true; }), prefix, suffix);
}

fs::path FolderFiles::pathOf(const char* call, const std::string& name) {
  const auto found = find(name);
  if (!found) throw PlatformError(call, name, "there is no such file");
  return folder_ / utf8Path(*found);
}

std::string FolderFiles::nameToWrite(const char* call, const std::string& name) {
  if (!isFileName(name)) throw PlatformError(call, name, "not a file name");
  const auto found = find(name);
  std::error_code error;
  const fs::file_status place =
      fs::status(folder_ / utf8Path(name), error);  // looked at once: others may write here too
  if (!found && fs::exists(place) && !fs::is_regular_file(place)) {
    throw PlatformError(call, name, kNoRegularFile);
  }
  return found.value_or(name);
}

void FolderFiles::tell(std::string_view operation, const std::string& name) const {
  if (observer_) observer_(operation, name);
}

std::string FolderFiles::read(const std::string& name) {
  const fs::path path = pathOf("read", name);
  std::string bytes = readFile("read", name, path, mostBytesOf(name));
  tell("read", path.filename().string());
  return bytes;
}

void FolderFiles::write(const std::string& name, const std::string& bytes) {
  const std::string stored = nameToWrite("write", name);
  removeLeftovers(folder_);
  replaceFile("write", name, folder_ / utf8Path(stored), folder_ / utf8Path(temporaryName(stored)), bytes);
  tell("write", stored);
}

void FolderFiles::append(const std::string& name, const std::string& bytes) {
  const std::string stored = nameToWrite("append", name);
  appendToFile("append", name, folder_ / utf8Path(stored), bytes);
  tell("append", stored);
}

void FolderFiles::remove(const std::string& name) {
  const fs::path path = pathOf("delete", name);
  std::error_code error;
  if (!fs::remove(path, error) || error) throw PlatformError("delete", name, error.message());
  tell("delete", path.filename().string());
}

std::uintmax_t FolderFiles::size(const std::string& name) {
  const fs::path path = pathOf("size", name);
  std::error_code error;
  const std::uintmax_t bytes = fs::file_size(path, error);
  if (error) throw PlatformError("size", name, error.message());
  return bytes;
}

std::string FolderFiles::readSound(const std::string& name) {
  return readFile("readSound", name, pathOf("readSound", name), kMostSoundBytes);
}

}  // namespace vorn
