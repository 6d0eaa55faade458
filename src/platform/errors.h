/// What the platform throws. Nothing here waits.
#pragma once

#include <stdexcept>
#include <string>

namespace vorn {

/// A failed platform call: what was called, with which value, and why it failed.
/// Start-up carries on over these one call at a time (`shell/`); anywhere else
/// one ends the program with exit status 1.
class PlatformError : public std::runtime_error {
 public:
  PlatformError(const std::string& call, const std::string& value, const std::string& reason)
      : std::runtime_error(call + "(" + value + "): " + reason) {}
};

/// A controller read while the device was not acquired or had been lost.
/// The reader acquires it again and tries at the next event.
class InputLost : public PlatformError {
 public:
  InputLost() : PlatformError("GetDeviceState", "", "the controller has been lost") {}
};

/// Makes one call whose failure the game carries on over. Returns whether it succeeded.
template <typename Call>
bool carryOn(Call&& call) {
  try {
    call();
    return true;
  } catch (const PlatformError&) {
    return false;
  }
}

/// The player asked to close the window: thrown by `Platform::yield`, once,
/// caught by the shell alone, which runs the ordinary shutdown.
struct WindowClosed {};

/// The program ends here and now: the headless script has ended, a waiting
/// statement passed its limit, or the player asked a second time to close the window.
/// Caught by `main` alone.
struct ProgramEnd {
  int exitStatus;
};

}  // namespace vorn
