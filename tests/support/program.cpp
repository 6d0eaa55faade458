#include "support/program.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "support/temporary_folder.h"

namespace vorn {
namespace {

constexpr int kCannotStart = 127;

/// Starts a program with these as its standard streams; -1 leaves the test's own.
pid_t start(const std::vector<std::string>& arguments, int input, int output, int errors) {
  const pid_t process = fork();
  if (process < 0) throw std::runtime_error(std::strerror(errno));
  if (process > 0) return process;
  if (input >= 0) dup2(input, STDIN_FILENO);
  if (output >= 0) dup2(output, STDOUT_FILENO);
  if (errors >= 0) dup2(errors, STDERR_FILENO);
  std::vector<char*> words;
  for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);
  execvp(words[0], words.data());
  _exit(kCannotStart);
}

int exitStatusOf(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

Finished runProgram(const std::vector<std::string>& arguments, const std::string& input) {
  const TemporaryFolder streams;
  streams.write("input", input);
  const auto open = [&](const char* name, int flags) {
    return ::open((streams.path() / name).c_str(), flags | O_CLOEXEC, 0600);
  };
  const int in = open("input", O_RDONLY);
  const int out = open("output", O_WRONLY | O_CREAT);
  const int err = open("errors", O_WRONLY | O_CREAT);
  const int status = exitStatusOf(start(arguments, in, out, err));
  for (const int descriptor : {in, out, err}) close(descriptor);
  return {status, streams.read("output"), streams.read("errors")};
}

LiveProgram::LiveProgram(const std::vector<std::string>& arguments) {
  signal(SIGPIPE, SIG_IGN);  // a program that has ended is seen by its output
  int toIt[2], fromIt[2];
  if (pipe2(toIt, O_CLOEXEC) != 0 || pipe2(fromIt, O_CLOEXEC) != 0)
    throw std::runtime_error(std::strerror(errno));
  process_ = start(arguments, toIt[0], fromIt[1], -1);
  close(toIt[0]);
  close(fromIt[1]);
  toProgram_ = toIt[1];
  fromProgram_ = fromIt[0];
}

LiveProgram::~LiveProgram() {
  closeInput();
  close(fromProgram_);
  if (process_ < 0) return;
  kill(process_, SIGKILL);
  exitStatusOf(process_);
}

void LiveProgram::writeLine(const std::string& line) const {
  const std::string bytes = line + '\n';
  (void)!write(toProgram_, bytes.data(), bytes.size());
}

void LiveProgram::closeInput() {
  if (toProgram_ >= 0) close(toProgram_);
  toProgram_ = -1;
}

bool LiveProgram::fill(int withinMs) {
  pollfd output{fromProgram_, POLLIN, 0};
  if (poll(&output, 1, withinMs) <= 0) return false;
  char bytes[4096];
  const ssize_t count = read(fromProgram_, bytes, sizeof bytes);
  if (count <= 0) return false;
  pending_.append(bytes, static_cast<std::size_t>(count));
  return true;
}

std::optional<std::string> LiveProgram::readLine(int withinMs) {
  std::size_t end;
  while ((end = pending_.find('\n')) == std::string::npos) {
    if (!fill(withinMs)) return std::nullopt;
  }
  std::string line = pending_.substr(0, end);
  pending_.erase(0, end + 1);
  return line;
}

bool LiveProgram::isSilent(int forMs) {
  return pending_.empty() && !fill(forMs);
}

int LiveProgram::waitForEnd() {
  const int status = exitStatusOf(process_);
  process_ = -1;
  return status;
}

}  // namespace vorn
