#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "platform/common/disk_file.h"
#include "platform/errors.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void failWithErrno(const char* call, const std::string& name) {
  throw PlatformError(call, name, std::strerror(errno));
}

/// Makes a system call again where a signal has interrupted it.
template <typename Call>
auto retried(Call call) {
  for (;;) {
    const auto result = call();
    if (result >= 0 || errno != EINTR) return result;
  }
}

/// An open regular file; closing is never skipped. Whatever else stands in its
/// place is refused without waiting for it.
class OpenFile {
 public:
  OpenFile(const char* call, const std::string& name, const fs::path& path, int flags)
      : call_(call),
        name_(name),
        descriptor_(retried([&] { return ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, 0666); })) {
    if (descriptor_ < 0) fail();
    if (!S_ISREG(status().st_mode)) {
      ::close(descriptor_);
      throw PlatformError(call_, name_, kNoRegularFile);
    }
  }
  ~OpenFile() { ::close(descriptor_); }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  struct stat status() const {
    struct stat result;
    if (::fstat(descriptor_, &result) != 0) fail();
    return result;
  }
  /// All its bytes, or as many as `atMost`.
  std::string read(std::size_t atMost) const {
    std::string bytes(std::min(static_cast<std::size_t>(status().st_size), atMost), '\0');
    std::size_t done = 0;
    while (done < atMost) {
      if (done == bytes.size()) bytes.resize(done + 1);  // one more, to see the end
      const ssize_t got =
          retried([&] { return ::read(descriptor_, bytes.data() + done, bytes.size() - done); });
      if (got < 0) fail();
      if (got == 0) break;
      done += static_cast<std::size_t>(got);
    }
    bytes.resize(done);
    return bytes;
  }
  void writeAll(std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t put = retried([&] { return ::write(descriptor_, bytes.data(), bytes.size()); });
      if (put < 0) fail();
      bytes.remove_prefix(static_cast<std::size_t>(put));
    }
  }
  void reachDisk() const {
    if (retried([&] { return ::fsync(descriptor_); }) != 0) fail();
  }
  void setMode(mode_t mode) const { (void)::fchmod(descriptor_, mode); }  // a wish: some disks know no modes
  void cutTo(off_t length) const {
    (void)retried([&] { return ::ftruncate(descriptor_, length); });
  }

 private:
  [[noreturn]] void fail() const { failWithErrno(call_, name_); }

  const char* call_;
  const std::string& name_;
  int descriptor_;
};

/// A renamed or new entry survives a power cut only once its folder is on the disk.
void folderReachesDisk(const fs::path& folder) {
  const int descriptor = retried([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
  if (descriptor < 0) return;
  (void)retried([&] { return ::fsync(descriptor); });
  ::close(descriptor);
}

}  // namespace

bool isFileName(const std::string& name) {
  return !name.empty() && name != "." && name != ".." &&
         name.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
}

bool standsAs(const fs::path& folder, const std::string& name) {
  std::error_code ignored;
  return fs::is_regular_file(folder / name, ignored);
}

std::string readFile(const char* call, const std::string& name, const fs::path& path, std::size_t atMost) {
  return OpenFile(call, name, path, O_RDONLY).read(atMost);
}

void replaceFile(const char* call, const std::string& name, const fs::path& target, const fs::path& temporary,
                 const std::string& bytes) {
  try {
    const OpenFile file(call, name, temporary, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
    struct stat old;
    if (::stat(target.c_str(), &old) == 0) file.setMode(old.st_mode & 07777);
    file.writeAll(bytes);
    file.reachDisk();
    if (retried([&] { return ::rename(temporary.c_str(), target.c_str()); }) != 0) failWithErrno(call, name);
  } catch (...) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
    throw;
  }
  folderReachesDisk(target.parent_path());
}

void appendToFile(const char* call, const std::string& name, const fs::path& path, const std::string& bytes) {
  const OpenFile file(call, name, path, O_WRONLY | O_CREAT | O_APPEND);
  const off_t before = file.status().st_size;
  try {
    file.writeAll(bytes);
    file.reachDisk();
  } catch (...) {
    file.cutTo(before);
    throw;
  }
}

FileContent contentOf(const char* call, const std::string& name, const fs::path& path) {
  constexpr std::int64_t kNanoseconds = 1'000'000'000;
  struct stat found;
  if (::stat(path.c_str(), &found) != 0) failWithErrno(call, name);
  return {found.st_dev, found.st_ino, found.st_mtim.tv_sec * kNanoseconds + found.st_mtim.tv_nsec,
          found.st_size};
}

}  // namespace vorn
