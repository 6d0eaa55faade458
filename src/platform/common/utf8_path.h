/// Names of files as the program holds them, and as the system has them.
#pragma once

#include <filesystem>
#include <string>

namespace vorn {

/// The path that `name`, UTF-8, stands for. A path made of it without this is another one where
/// the system does not name its files in UTF-8.
inline std::filesystem::path utf8Path(const std::string& name) {
  return std::u8string(name.begin(), name.end());
}

}  // namespace vorn
