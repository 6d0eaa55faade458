/// The player's wish to close the window, counted: the first leads to the
/// ordinary shutdown, the second ends the program where it is.
#pragma once

#include <utility>

#include "platform/errors.h"

namespace vorn {

class CloseRequests {
 public:
  /// The ordinary shutdown has begun: a first request asks for what is happening already.
  void enterShutdown() { isShuttingDown_ = true; }
  /// Whether the next request changes anything.
  bool isHeeded() const { return isAsked_ || !isShuttingDown_; }
  /// Throws `WindowClosed` or `ProgramEnd`, or nothing for the first one of a shutdown.
  void ask() {
    if (std::exchange(isAsked_, true)) {
      throw ProgramEnd{0};
    }
    if (!isShuttingDown_) {
      throw WindowClosed{};
    }
  }

 private:
  bool isAsked_ = false;
  bool isShuttingDown_ = false;
};

}  // namespace vorn
