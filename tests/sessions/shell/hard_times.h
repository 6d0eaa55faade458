/// What a computer does to a program: folders that cannot be written, files that
/// cannot be read, disks that are full. Linux only.
#pragma once

#include <cstdint>
#include <filesystem>

namespace vorn {

/// As long as it lives, permissions of files hold for root too.
class OrdinaryRights {
 public:
  OrdinaryRights();
  ~OrdinaryRights();
  OrdinaryRights(const OrdinaryRights&) = delete;
  OrdinaryRights& operator=(const OrdinaryRights&) = delete;

 private:
  std::uint32_t effective_ = 0;
};

/// As long as it lives, no file can be written beyond so many bytes.
class FullDisk {
 public:
  explicit FullDisk(std::uint64_t bytesAFile);
  ~FullDisk();
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  std::uint64_t before_ = 0;
};

void makeReadOnly(const std::filesystem::path& folder);
void makeWritable(const std::filesystem::path& folder);
void makeUnreadable(const std::filesystem::path& file);

}  // namespace vorn
