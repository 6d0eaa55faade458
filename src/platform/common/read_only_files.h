/// A working folder that is only read: what is written to it, added or removed is forgotten.
#pragma once

#include "platform/files.h"

namespace vorn {

/// Reads pass through to other files, which are not owned.
class ReadOnlyFiles : public Files {
 public:
  explicit ReadOnlyFiles(Files& inner) : inner_(inner) {}
  std::optional<std::string> find(const std::string& name) override { return inner_.find(name); }
  std::vector<std::string> list(const std::string& prefix, const std::string& suffix) override {
    return inner_.list(prefix, suffix);
  }
  std::string read(const std::string& name) override { return inner_.read(name); }
  void write(const std::string&, const std::string&) override {}
  void append(const std::string&, const std::string&) override {}
  void remove(const std::string&) override {}
  bool claim() override { return false; }
  std::unique_ptr<FolderLock> lock() override { return nullptr; }
  std::uintmax_t size(const std::string& name) override { return inner_.size(name); }
  std::string readSound(const std::string& name) override { return inner_.readSound(name); }

 private:
  Files& inner_;
};

}  // namespace vorn
