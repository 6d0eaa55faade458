/// A folder of its own for one test, removed with all it holds.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vorn {

class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  void write(const std::string& name, const std::string& bytes) const;
  std::string read(const std::string& name) const;  ///< throws where there is no such file
  bool has(const std::string& name) const;
  std::vector<std::string> names() const;  ///< of everything in it, sorted

 private:
  std::filesystem::path path_;
};

}  // namespace vorn
