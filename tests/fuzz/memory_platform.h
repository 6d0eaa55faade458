/// A headless platform whose folder is in memory, and whose player only lets time pass.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "platform/headless/headless_platform.h"

namespace vorn {

/// Files by their exact names.
class MemoryFiles : public Files {
 public:
  std::optional<std::string> find(const std::string& name) override {
    return contents.contains(name) ? std::optional(name) : std::nullopt;
  }
  std::vector<std::string> list(const std::string& prefix, const std::string& suffix) override {
    std::vector<std::string> names;
    for (const auto& [name, bytes] : contents) {
      if (name.starts_with(prefix) && name.ends_with(suffix)) names.push_back(name);
    }
    return names;
  }
  std::string read(const std::string& name) override { return contents.at(name); }
  void write(const std::string& name, const std::string& bytes) override { contents[name] = bytes; }
  void append(const std::string& name, const std::string& bytes) override { contents[name] += bytes; }
  void remove(const std::string& name) override { contents.erase(name); }
  bool claim() override { return false; }
  std::unique_ptr<FolderLock> lock() override { return nullptr; }
  std::uintmax_t size(const std::string& name) override { return contents.at(name).size(); }
  std::string readSound(const std::string& name) override { return contents.at(name); }

  std::map<std::string, std::string> contents;
};

class MemoryPlatform : public HeadlessPlatform {
 public:
  MemoryPlatform() : MemoryPlatform(nullptr) {}
  explicit MemoryPlatform(TraceSink* trace) : HeadlessPlatform({}, connections(trace)) {}
  Files& files() override { return inMemory; }

  MemoryFiles inMemory;

 private:
  struct Waiting : ScriptSource {
    std::optional<std::string> nextLine() override { return "wait 1000"; }
    std::string name() const override { return "waiting"; }
  };
  static HeadlessConnections connections(TraceSink* trace) {
    static Waiting waiting;
    HeadlessConnections made;
    made.script = &waiting;
    made.trace = trace;
    return made;
  }
};

}  // namespace vorn
