#include <spawn.h>
#include <sys/auxv.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>

#include "program/installation.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSoundTool = "vorn1-sounds";

/// The folder of the file that this process was started from, links resolved; empty where it cannot be told.
/// By the name that it was started with, for /proc is not there everywhere.
fs::path programFolder() {
  std::error_code error;
  // NOLINTNEXTLINE(performance-no-int-to-ptr): so the kernel hands it over
  const auto* const name = reinterpret_cast<const char*>(getauxval(AT_EXECFN));
  return name == nullptr ? fs::path() : fs::canonical(name, error).parent_path();
}

/// Runs `program` with one argument and waits for it. Returns whether all went well.
bool run(const fs::path& program, const fs::path& argument) {
  std::string name = program.string(), value = argument.string();
  char* const words[] = {name.data(), value.data(), nullptr};
  // Whoever started this may ignore the ends of children, and then nobody is told how one ended.
  std::signal(SIGCHLD, SIG_DFL);
  pid_t child = 0;
  int status = 0;
  if (::posix_spawn(&child, name.c_str(), nullptr, nullptr, words, environ) != 0) return false;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return false;
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

fs::path installedSounds() {
  return (programFolder() / VORN_FROM_PROGRAM_TO_SOUNDS).lexically_normal();
}

fs::path playersData() {
  const char* const home = std::getenv("HOME");
  const char* const data = std::getenv("XDG_DATA_HOME");
  if (data && *data) return data;
  return fs::path(home ? home : ".") / ".local" / "share";
}

/// By the tool that lies beside the program, where it was built.
void makeSounds(const fs::path& folder) {
  std::error_code error;
  const fs::path tool = programFolder() / kSoundTool;
  if (!fs::exists(tool, error)) return;
  std::cerr << "Making the sounds in " << folder.string() << '.' << std::endl;
  if (!run(tool, folder)) {
    std::cerr << "The sounds could not be made." << std::endl;
  }
}

}  // namespace vorn
