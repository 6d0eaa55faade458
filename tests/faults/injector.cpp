// Loaded before everything else: makes one call of the program fail, or kills the
// program at it. Only files of one folder count, and memory from the first of them on.
//
//   VORN_FAULT_KIND     open, read, write, fsync, rename, unlink, sound (opening or
//                       reading one), memory, or file (any call but of sounds and memory)
//   VORN_FAULT_NUMBER   which call of the kind, from 1
//   VORN_FAULT_MODE     fail or kill
//   VORN_FAULT_FOLDER   the folder
//   VORN_FAULT_REACHED  is made as an empty file when the call is reached

#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdlib>
#include <cstring>

extern "C" void* __libc_malloc(std::size_t size);

namespace {

constexpr int kMostDescriptors = 1024;
enum class Kept : unsigned char { kNot, kFile, kSound };

struct Plan {
  const char* kind = std::getenv("VORN_FAULT_KIND");
  const char* folder = std::getenv("VORN_FAULT_FOLDER");
  const char* reached = std::getenv("VORN_FAULT_REACHED");
  long left = std::atol(std::getenv("VORN_FAULT_NUMBER"));
  bool kills = std::strcmp(std::getenv("VORN_FAULT_MODE"), "kill") == 0;
};

bool isArmed = false;  // a file of the folder has been opened
std::array<Kept, kMostDescriptors> kept{};

Plan& plan() {
  static Plan thePlan;
  return thePlan;
}

bool isKind(const char* kind) {
  return std::strcmp(plan().kind, kind) == 0;
}

/// Whether this call, one of those that count, is the one.
bool strikes() {
  if (--plan().left != 0) return false;
  syscall(SYS_close, syscall(SYS_open, plan().reached, O_CREAT | O_WRONLY, 0600));
  if (plan().kills) syscall(SYS_kill, getpid(), SIGKILL);
  return true;
}

bool fails(const char* kind, Kept what, int error) {
  if (what == Kept::kNot) return false;
  const bool counts = what == Kept::kSound ? isKind("sound") : isKind(kind) || isKind("file");
  if (!counts || !strikes()) return false;
  errno = error;
  return true;
}

Kept kindOf(const char* path) {
  if (std::strncmp(path, plan().folder, std::strlen(plan().folder)) != 0) return Kept::kNot;
  const std::size_t length = std::strlen(path);
  return length > 4 && std::strcmp(path + length - 4, ".wav") == 0 ? Kept::kSound : Kept::kFile;
}

Kept kindOf(int descriptor) {
  return descriptor >= 0 && descriptor < kMostDescriptors ? kept[static_cast<std::size_t>(descriptor)]
                                                          : Kept::kNot;
}

template <typename Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  const Kept what = kindOf(path);
  isArmed |= what == Kept::kFile;
  if (fails("open", what, EIO)) return -1;
  const int descriptor = static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
  if (descriptor >= 0 && descriptor < kMostDescriptors) kept[static_cast<std::size_t>(descriptor)] = what;
  return descriptor;
}

ssize_t read(int descriptor, void* bytes, std::size_t count) {
  if (fails("read", kindOf(descriptor), EIO)) return -1;
  return syscall(SYS_read, descriptor, bytes, count);
}

ssize_t write(int descriptor, const void* bytes, std::size_t count) {
  if (fails("write", kindOf(descriptor), ENOSPC)) {
    if (count > 1) (void)syscall(SYS_write, descriptor, bytes, count / 2);  // the disk became full within it
    return -1;
  }
  return syscall(SYS_write, descriptor, bytes, count);
}

int fsync(int descriptor) {
  if (fails("fsync", kindOf(descriptor), EIO)) return -1;
  return static_cast<int>(syscall(SYS_fsync, descriptor));
}

int close(int descriptor) {
  if (kindOf(descriptor) != Kept::kNot) kept[static_cast<std::size_t>(descriptor)] = Kept::kNot;
  return static_cast<int>(syscall(SYS_close, descriptor));
}

int rename(const char* from, const char* to) noexcept {
  if (fails("rename", kindOf(to), EIO)) return -1;
  return static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

int remove(const char* path) noexcept {
  if (fails("unlink", kindOf(path), EIO)) return -1;
  return next<int(const char*)>("remove")(path);
}

int unlink(const char* path) noexcept {
  if (fails("unlink", kindOf(path), EIO)) return -1;
  return static_cast<int>(syscall(SYS_unlink, path));
}

void* malloc(std::size_t size) {
  if (isArmed && isKind("memory") && strikes()) {
    errno = ENOMEM;
    return nullptr;
  }
  return __libc_malloc(size);
}

}  // extern "C"
