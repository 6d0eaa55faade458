#include "support/temporary_folder.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace vorn {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  constexpr int kTries = 100;
  std::random_device random;
  for (int i = 0; i < kTries && path_.empty(); ++i) {
    const fs::path place = fs::temp_directory_path() / ("vorn1-test-" + std::to_string(random()));
    if (fs::create_directory(place)) path_ = place;  // else somebody else has it
  }
  if (path_.empty()) throw std::runtime_error("no temporary folder");
  fs::permissions(path_, fs::perms(0755));
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

void TemporaryFolder::write(const std::string& name, const std::string& bytes) const {
  fs::remove(path_ / name);  // never through a link into a file that others share
  std::ofstream(path_ / name, std::ios::binary) << bytes;
}

std::string TemporaryFolder::read(const std::string& name) const {
  std::ifstream file(path_ / name, std::ios::binary);
  if (!file) throw std::runtime_error("no file " + (path_ / name).string());
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

bool TemporaryFolder::has(const std::string& name) const {
  return fs::exists(path_ / name);
}

std::vector<std::string> TemporaryFolder::names() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(path_)) names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace vorn
