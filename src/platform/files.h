/// The files of the working folder. All names are plain names in that folder and
/// are looked up without regard to case: regular files only, the exact case
/// first, then the alphabetically first. Calls block for the disk and nothing
/// else; every failure is a `PlatformError`.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vorn {

/// Keeps other programs on the same folder waiting for as long as it lives.
class FolderLock {
 public:
  virtual ~FolderLock() = default;
};

class Files {
 public:
  virtual ~Files() = default;

  /// The name under which the file stands in the folder, if it does.
  virtual std::optional<std::string> find(const std::string& name) = 0;
  /// The names that begin with `prefix` and end with `suffix`, in the order of
  /// their lower-cased bytes.
  virtual std::vector<std::string> list(const std::string& prefix, const std::string& suffix) = 0;

  /// The bytes of a settings, record, summary or log file; of one that is longer than the
  /// game can have made it the first 64 KB, or 16 MB of a text.
  virtual std::string read(const std::string& name) = 0;
  /// Replaces the file whole: afterwards it holds either the old or the new bytes, whenever the power goes.
  virtual void write(const std::string& name, const std::string& bytes) = 0;
  /// Adds `bytes` at the end, in one piece, making the file where there is none.
  virtual void append(const std::string& name, const std::string& bytes) = 0;
  virtual void remove(const std::string& name) = 0;

  /// Marks the folder as in use until the program ends. Returns whether another program is using it.
  virtual bool claim() = 0;
  /// Locks the folder for a moment; waits for another program's moment to be over,
  /// a second at most. Null where the folder cannot be locked.
  virtual std::unique_ptr<FolderLock> lock() = 0;

  virtual std::uintmax_t size(const std::string& name) = 0;    ///< bytes
  virtual std::string readSound(const std::string& name) = 0;  ///< the bytes of a sound file
};

}  // namespace vorn
