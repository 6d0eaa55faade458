#include "platform/desktop/broken_pipes.h"

#include <signal.h>

namespace vorn {

void ignoreBrokenPipes() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

}  // namespace vorn
