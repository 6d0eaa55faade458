/// Which programs use a folder: each marks it for as long as it runs, and locks
/// it for the moment in which a file is compared and replaced. Nothing is written
/// for it: the marks belong to the system and go with the program, however it ends.
#pragma once

#include <filesystem>
#include <memory>

#include "platform/files.h"

namespace vorn {

class FolderUse {
 public:
  explicit FolderUse(const std::filesystem::path& folder);
  ~FolderUse();
  FolderUse(const FolderUse&) = delete;
  FolderUse& operator=(const FolderUse&) = delete;

  /// Marks the folder as in use. Returns whether another one has it marked.
  bool claim();
  /// Locks the folder, waiting a second at most; null where that fails.
  std::unique_ptr<FolderLock> lock();

 private:
  struct Folder;                    ///< as the system knows it
  std::unique_ptr<Folder> folder_;  ///< null where it cannot be opened
};

}  // namespace vorn
