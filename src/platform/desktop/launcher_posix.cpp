#include "platform/desktop/launcher.h"

#include <signal.h>
#include <spawn.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "platform/errors.h"

namespace vorn {

void launch(const std::filesystem::path& program) {
  const std::filesystem::path whole = std::filesystem::absolute(program);
  std::string path = whole.string();
  char* const arguments[] = {path.data(), nullptr};

  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  // It gets the game's standard streams, but not the game's way with broken pipes.
  sigset_t defaults;
  sigemptyset(&defaults);
  sigaddset(&defaults, SIGPIPE);
  posix_spawnattr_setsigdefault(&attributes, &defaults);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
  posix_spawn_file_actions_addchdir_np(&actions, whole.parent_path().c_str());
  pid_t child = 0;
  const int error = posix_spawn(&child, path.c_str(), &actions, &attributes, arguments, environ);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  if (error != 0) {
    throw PlatformError("Shell", path, std::strerror(error));
  }
}

}  // namespace vorn
