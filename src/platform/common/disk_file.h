/// Single files of the disk, as each system gives them; `folder_files.cpp` knows
/// which of them belong to the game. Calls block for the disk. A failure is a
/// `PlatformError` of `call` and `name`; whatever is no regular file (a pipe, a
/// device, a folder) fails without being waited for.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <tuple>

namespace vorn {

/// Why a file cannot be had where something else stands.
inline constexpr const char* kNoRegularFile = "what stands there is no ordinary file";

/// Whether a file of a folder can have this name: no path, nothing that the system takes for a device.
bool isFileName(const std::string& name);

/// Whether a regular file stands in `folder` under exactly this name, each letter in its case.
bool standsAs(const std::filesystem::path& folder, const std::string& name);

/// All bytes of the file, or as many as `atMost`.
std::string readFile(const char* call, const std::string& name, const std::filesystem::path& path,
                     std::size_t atMost);

/// Puts a file of these bytes in the place of `target`, be there one or not, by way of `temporary`, which
/// must not exist and is gone afterwards: whenever the power goes, `target` holds the old or the new bytes.
void replaceFile(const char* call, const std::string& name, const std::filesystem::path& target,
                 const std::filesystem::path& temporary, const std::string& bytes);

/// Adds `bytes` at the end, all of them or none, making the file where there is none.
void appendToFile(const char* call, const std::string& name, const std::filesystem::path& path,
                  const std::string& bytes);

/// Tells one content of one file from every other.
struct FileContent {
  std::uint64_t device, file;
  std::int64_t changed, size;
  bool operator<(const FileContent& other) const {
    return std::tie(device, file, changed, size) <
           std::tie(other.device, other.file, other.changed, other.size);
  }
};
FileContent contentOf(const char* call, const std::string& name, const std::filesystem::path& path);

}  // namespace vorn
