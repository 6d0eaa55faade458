#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <climits>

#include "program/caption_output.h"

namespace vorn {

void prepareCaptionOutput() {
  ::signal(SIGPIPE, SIG_IGN);
}

std::size_t writeCaption(std::string_view text) {
  pollfd output{STDOUT_FILENO, POLLOUT, 0};
  if (::poll(&output, 1, 0) <= 0 || (output.revents & POLLOUT) == 0) {
    return 0;
  }
  // A pipe that is ready takes at least `PIPE_BUF` bytes at once.
  const ssize_t written = ::write(STDOUT_FILENO, text.data(), std::min<std::size_t>(text.size(), PIPE_BUF));
  return written < 0 ? 0 : static_cast<std::size_t>(written);
}

}  // namespace vorn
