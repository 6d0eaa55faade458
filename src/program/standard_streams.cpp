#include "program/standard_streams.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <climits>
#include <string_view>
#include <utility>

namespace vorn {

void openStandardStreams() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(descriptor, F_GETFD) < 0) {
      (void)!::open("/dev/null", O_RDWR);  // takes the lowest free number, which is this one
    }
  }
}

void ignoreBrokenPipes() {
  ::signal(SIGPIPE, SIG_IGN);
}

CaptionStream::Buffer::int_type CaptionStream::Buffer::overflow(int_type character) {
  if (!traits_type::eq_int_type(character, traits_type::eof())) {
    text_ += traits_type::to_char_type(character);
  }
  return traits_type::not_eof(character);
}

/// A pipe that is ready takes at least `PIPE_BUF` bytes at once.
int CaptionStream::Buffer::sync() {
  const std::string text = std::exchange(text_, {});
  for (std::string_view rest = text; !rest.empty();) {
    pollfd output{STDOUT_FILENO, POLLOUT, 0};
    if (::poll(&output, 1, 0) <= 0 || (output.revents & POLLOUT) == 0) {
      break;
    }
    const ssize_t written = ::write(STDOUT_FILENO, rest.data(), std::min<std::size_t>(rest.size(), PIPE_BUF));
    if (written < 0) {
      break;
    }
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

}  // namespace vorn
