/// `Files` for a place without folders: the player's files stand in memory, as they
/// were stored when the game began, and each change is stored before the call returns.
/// The game's sounds stand beside them and never change.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace vorn {

/// Keeps the player's files beyond the program's end. Both wait, and throw
/// `PlatformError` where nothing is stored.
class FileStore {
 public:
  virtual ~FileStore() = default;
  virtual void put(const std::string& name, const std::string& bytes) = 0;
  virtual void remove(const std::string& name) = 0;
};

class StoredFiles : public Files {
 public:
  using Contents = std::map<std::string, std::string>;  ///< names and bytes

  /// The store is not owned.
  StoredFiles(Contents files, Contents sounds, FileStore& store)
      : files_(std::move(files)), sounds_(std::move(sounds)), store_(store) {}

  std::optional<std::string> find(const std::string& name) override;
  std::vector<std::string> list(const std::string& prefix, const std::string& suffix) override;
  std::string read(const std::string& name) override;
  void write(const std::string& name, const std::string& bytes) override;
  void append(const std::string& name, const std::string& bytes) override;
  void remove(const std::string& name) override;
  bool claim() override { return false; }  // who opens the game a second time is not let in
  std::unique_ptr<FolderLock> lock() override { return std::make_unique<FolderLock>(); }
  std::uintmax_t size(const std::string& name) override;
  std::string readSound(const std::string& name) override;

 private:
  const std::string& bytesOf(const char* call, const std::string& name) const;
  void replace(const std::string& name, std::string bytes);

  Contents files_;
  const Contents sounds_;
  FileStore& store_;
};

}  // namespace vorn
