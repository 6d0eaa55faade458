#include <windows.h>

#include <atomic>
#include <cstdlib>

#include "platform/desktop/quit_signals.h"

namespace vorn {
namespace {

std::atomic<int> received{0}, taken{0};

/// Runs on a thread of its own. Once it has returned from anything but Ctrl and C, or Ctrl and
/// Break, the system ends the program.
BOOL WINAPI countRequest(DWORD event) {
  constexpr DWORD kTimeToEnd = 1000;  // milliseconds
  const bool mayGoOn = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
  if (++received > 1 || !mayGoOn) {
    ::Sleep(mayGoOn ? kTimeToEnd : INFINITE);  // the system itself waits only for a few seconds
    ::_exit(0);
  }
  return TRUE;
}

}  // namespace

void catchQuitSignals() {
  ::SetConsoleCtrlHandler(countRequest, FALSE);
  received = taken = 0;
  ::SetConsoleCtrlHandler(countRequest, TRUE);
}

bool takeQuitSignal() {
  if (taken == received) return false;
  ++taken;
  return true;
}

}  // namespace vorn
