#include "maker.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>
#include <stdexcept>

#include "checks.h"

namespace vorn::sounds {
namespace {

std::runtime_error systemError(const std::string& what) {
  return std::runtime_error(what + ": " + std::strerror(errno));
}

void writeAll(int file, std::string_view bytes, const std::string& path) {
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) throw systemError("cannot write " + path);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void writeFile(const std::string& path, std::string_view bytes) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (file < 0) throw systemError("cannot create " + path);
  try {
    writeAll(file, bytes, path);
  } catch (...) {
    close(file);
    throw;
  }
  if (close(file) != 0) throw systemError("cannot write " + path);
}

void writeChecked(const Recipe& recipe, const std::string& folder) {
  const std::string path = folder + "/" + soundFileName(recipe.name);
  const std::string unfinished = path + ".part";
  try {
    writeFile(unfinished, makeSound(recipe));
    const std::vector<std::string> faults = faultsOfFile(layoutOf(recipe.name), unfinished);
    if (!faults.empty()) throw std::runtime_error("the file came out wrong: " + faults.front());
    if (rename(unfinished.c_str(), path.c_str()) != 0) throw systemError("cannot rename to " + path);
  } catch (...) {
    unlink(unfinished.c_str());
    throw;
  }
}

/// A process that makes one sound and says through a pipe what went wrong.
struct Worker {
  const Recipe* recipe;
  int complaints;
};

[[noreturn]] void work(const Recipe& recipe, const std::string& folder, int complaints) {
  int status = 0;
  try {
    writeChecked(recipe, folder);
  } catch (const std::exception& error) {
    status = 1;
    const std::string reason = error.what();
    [[maybe_unused]] const ssize_t said = write(complaints, reason.data(), reason.size());
  }
  _exit(status);
}

void startWorker(const Recipe& recipe, const std::string& folder, std::map<pid_t, Worker>& running) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw systemError("cannot make a pipe");
  std::fflush(nullptr);
  const pid_t process = fork();
  if (process < 0) {
    const auto problem = systemError("cannot start a process");
    for (const int end : ends) close(end);
    throw problem;
  }
  if (process == 0) work(recipe, folder, ends[1]);
  close(ends[1]);
  running[process] = {&recipe, ends[0]};
}

std::string readAll(int file) {
  std::string text;
  std::array<char, 512> piece{};
  for (ssize_t got; (got = read(file, piece.data(), piece.size())) > 0;) {
    text.append(piece.data(), static_cast<std::size_t>(got));
  }
  close(file);
  return text;
}

}  // namespace

std::vector<Failure> makeSounds(std::span<const Recipe* const> recipes, const std::string& folder,
                                int workers, const std::function<void(std::string_view, int)>& made) {
  // The longest first: the last ones to finish are then short.
  std::vector<const Recipe*> waiting(recipes.begin(), recipes.end());
  std::stable_sort(waiting.begin(), waiting.end(), [](const Recipe* a, const Recipe* b) {
    return findInCatalogue(a->name)->bytes < findInCatalogue(b->name)->bytes;
  });
  std::map<pid_t, Worker> running;
  std::vector<Failure> failures;
  int count = 0;
  while (!running.empty() || (!waiting.empty() && failures.empty())) {
    if (!waiting.empty() && failures.empty() && static_cast<int>(running.size()) < workers) {
      const Recipe& next = *waiting.back();
      waiting.pop_back();
      try {
        startWorker(next, folder, running);
      } catch (const std::exception& error) {
        failures.push_back({std::string(next.name), error.what()});  // those that run are waited for
      }
      continue;
    }
    int status = 0;
    const pid_t process = waitpid(-1, &status, 0);
    if (process < 0 && errno == EINTR) continue;
    if (process < 0) throw systemError("cannot wait for a process");
    const auto worker = running.find(process);
    if (worker == running.end()) continue;
    const std::string complaint = readAll(worker->second.complaints);
    const std::string_view name = worker->second.recipe->name;
    running.erase(worker);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
      made(name, ++count);
    } else {
      failures.push_back(
          {std::string(name), complaint.empty() ? "its process ended unexpectedly" : complaint});
    }
  }
  return failures;
}

}  // namespace vorn::sounds
