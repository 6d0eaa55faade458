#include "platform/web/stored_files.h"

#include <algorithm>
#include <utility>

#include "platform/common/file_names.h"
#include "platform/errors.h"

namespace vorn {
namespace {

/// The exact name, else the alphabetically first that differs in case alone.
std::optional<std::string> nameIn(const StoredFiles::Contents& contents, const std::string& name) {
  if (contents.contains(name)) {
    return name;
  }
  const std::string wanted = lowerCased(name);
  const auto found = std::find_if(contents.begin(), contents.end(),
                                  [&](const auto& file) { return lowerCased(file.first) == wanted; });
  return found == contents.end() ? std::nullopt : std::optional(found->first);
}

}  // namespace

std::optional<std::string> StoredFiles::find(const std::string& name) {
  const auto own = nameIn(files_, name);
  return own ? own : nameIn(sounds_, name);
}

std::vector<std::string> StoredFiles::list(const std::string& prefix, const std::string& suffix) {
  std::vector<std::string> names;
  for (const Contents* contents : {&std::as_const(files_), &sounds_}) {
    for (const auto& file : *contents) names.push_back(file.first);
  }
  return namesBetween(std::move(names), prefix, suffix);
}

const std::string& StoredFiles::bytesOf(const char* call, const std::string& name) const {
  for (const Contents* contents : {&files_, &sounds_}) {
    if (const auto found = nameIn(*contents, name)) {
      return contents->at(*found);
    }
  }
  throw PlatformError(call, name, "there is no such file");
}

std::string StoredFiles::read(const std::string& name) {
  return bytesOf("read", name);
}

/// In memory only what is stored: what a later start would find is what this one goes on with.
void StoredFiles::replace(const std::string& name, std::string bytes) {
  const std::string stored = nameIn(files_, name).value_or(name);
  store_.put(stored, bytes);
  files_[stored] = std::move(bytes);
}

void StoredFiles::write(const std::string& name, const std::string& bytes) {
  replace(name, bytes);
}

void StoredFiles::append(const std::string& name, const std::string& bytes) {
  const auto stored = nameIn(files_, name);
  replace(name, (stored ? files_.at(*stored) : "") + bytes);
}

void StoredFiles::remove(const std::string& name) {
  const auto stored = nameIn(files_, name);
  if (!stored) {
    throw PlatformError("delete", name, "there is no such file");
  }
  store_.remove(*stored);
  files_.erase(*stored);
}

std::uintmax_t StoredFiles::size(const std::string& name) {
  return bytesOf("size", name).size();
}

std::string StoredFiles::readSound(const std::string& name) {
  return bytesOf("readSound", name);
}

}  // namespace vorn
