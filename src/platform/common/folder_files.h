/// `Files` over a folder of the file system. Plain names only; a symbolic link to
/// a regular file counts as one, and a write puts a file in its place. Calls
/// block for the disk.
#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

#include "platform/common/folder_use.h"
#include "platform/files.h"

namespace vorn {

class FolderFiles : public Files {
 public:
  /// Told of each finished `read`, `write`, `append` and `delete` with the name
  /// under which the file stands; not of sounds, sizes and look-ups.
  using Observer = std::function<void(std::string_view operation, const std::string& name)>;

  explicit FolderFiles(std::filesystem::path folder, Observer observer = {});

  std::optional<std::string> find(const std::string& name) override;
  std::vector<std::string> list(const std::string& prefix, const std::string& suffix) override;
  std::string read(const std::string& name) override;
  void write(const std::string& name, const std::string& bytes) override;
  void append(const std::string& name, const std::string& bytes) override;
  void remove(const std::string& name) override;
  bool claim() override { return use_.claim(); }
  std::unique_ptr<FolderLock> lock() override { return use_.lock(); }
  std::uintmax_t size(const std::string& name) override;
  std::string readSound(const std::string& name) override;

  const std::filesystem::path& folder() const { return folder_; }
  /// Where the file stands; a `PlatformError` of `call` where there is none.
  std::filesystem::path pathOf(const char* call, const std::string& name);

 private:
  std::string nameToWrite(const char* call, const std::string& name);
  void tell(std::string_view operation, const std::string& name) const;

  std::filesystem::path folder_;
  FolderUse use_;
  Observer observer_;
};

}  // namespace vorn
