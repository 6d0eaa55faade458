#include "platform/headless/session_files.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>

#include "platform/common/utf8_path.h"

namespace vorn {
namespace {

constexpr const char* kStandard = "-";

/// Opens `file`, or takes the standard stream.
template <typename Stream, typename File>
Stream& open(File& file, Stream& standard, const char* what, const std::string& name) {
  if (name == kStandard) return standard;
  std::error_code ignored;
  if (std::filesystem::is_directory(utf8Path(name), ignored)) throw PlatformError(what, name, "is a folder");
  file.open(utf8Path(name),
            std::ios::binary | (std::is_same_v<File, std::ifstream> ? std::ios::in : std::ios::out));
  if (!file) throw PlatformError(what, name, std::strerror(errno));
  return file;
}

}  // namespace

SessionFiles::SessionFiles(const SessionFileNames& names) {
  if (!names.script.empty()) {
    std::istream& stream = open(scriptFile_, std::cin, "script", names.script);
    script_.emplace(stream, names.script == kStandard ? "standard input" : names.script);
  }
  if (!names.trace.empty()) trace_.emplace(open<std::ostream>(traceFile_, std::cout, "trace", names.trace));
  if (!names.render.empty()) render_ = openRenderSink(names.render);
}

HeadlessConnections SessionFiles::connections() {
  return {script_ ? &*script_ : nullptr, trace_ ? &*trace_ : nullptr, render_.get(), nullptr, nullptr};
}

}  // namespace vorn
