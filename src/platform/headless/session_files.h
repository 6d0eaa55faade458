/// What a headless session reads and writes beside its folder, opened by name.
#pragma once

#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include "platform/headless/headless_platform.h"

namespace vorn {

/// Names as on the command line: empty for none, "-" for standard input or output.
struct SessionFileNames {
  std::string script, trace, render;
};

/// Keeps the files open for as long as the session runs.
class SessionFiles {
 public:
  /// Throws `PlatformError` where a file cannot be opened. A named pipe waits for its other end.
  explicit SessionFiles(const SessionFileNames& names);

  HeadlessConnections connections();

 private:
  std::ifstream scriptFile_;
  std::ofstream traceFile_;
  std::optional<StreamScript> script_;
  std::optional<StreamTraceSink> trace_;
  std::unique_ptr<RenderSink> render_;
};

}  // namespace vorn
