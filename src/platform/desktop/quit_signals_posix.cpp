#include "platform/desktop/quit_signals.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>

namespace vorn {
namespace {

std::atomic<int> received{0}, taken{0};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may wait for nobody");

void countRequest(int) {
  constexpr unsigned kTimeToEnd = 1;  // seconds
  if (++received > 1) ::alarm(kTimeToEnd);
}

void endNow(int) {
  ::_exit(0);
}

void handle(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  ::sigemptyset(&action.sa_mask);
  ::sigaction(signal, &action, nullptr);
}

}  // namespace

void catchQuitSignals() {
  ::alarm(0);
  received = taken = 0;
  handle(SIGALRM, endNow);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) handle(signal, countRequest);
}

bool takeQuitSignal() {
  if (taken == received) return false;
  ++taken;
  return true;
}

}  // namespace vorn
