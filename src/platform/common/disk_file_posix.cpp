#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string_view>

#include "platform/common/disk_file.h"
#include "platform/common/whole_bytes.h"
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

/// Closes what it has opened, in whatever way it ends; negative where it has opened nothing.
struct Descriptor {
  explicit Descriptor(int opened) : number(opened) {}
  ~Descriptor() {
    if (number >= 0) ::close(number);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  const int number;
};

/// An open regular file. Whatever else stands in its place is refused without waiting for it.
class OpenFile {
 public:
  OpenFile(const char* call, const std::string& name, const fs::path& path, int flags)
      : call_(call),
        name_(name),
        file_(retried([&] { return ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, 0666); })) {
    if (file_.number < 0) fail();
    if (!S_ISREG(status().st_mode)) throw PlatformError(call_, name_, kNoRegularFile);
  }

  struct stat status() const {
    struct stat result;
    if (::fstat(file_.number, &result) != 0) fail();
    return result;
  }
  off_t size() const { return status().st_size; }
  /// All its bytes, or as many as `atMost`.
  std::string read(std::size_t atMost) const {
    return readAll(static_cast<std::uint64_t>(size()), atMost, [this](char* to, std::size_t most) {
      return counted(retried([&] { return ::read(file_.number, to, most); }));
    });
  }
  void write(std::string_view bytes) const {
    writeAll(bytes, [this](const char* from, std::size_t most) {
      return counted(retried([&] { return ::write(file_.number, from, most); }));
    });
  }
  void reachDisk() const {
    if (retried([&] { return ::fsync(file_.number); }) != 0) fail();
  }
  void setMode(mode_t mode) const { (void)::fchmod(file_.number, mode); }  // a wish: some disks know no modes
  void cutTo(off_t length) const {
    (void)retried([&] { return ::ftruncate(file_.number, length); });
  }

 private:
  [[noreturn]] void fail() const { failWithErrno(call_, name_); }
  std::size_t counted(ssize_t moved) const {
    if (moved < 0) fail();
    return static_cast<std::size_t>(moved);
  }

  const char* call_;
  const std::string& name_;
  Descriptor file_;
};

/// A renamed or new entry survives a power cut only once its folder is on the disk.
void folderReachesDisk(const fs::path& folder) {
  const Descriptor descriptor(
      retried([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
  if (descriptor.number >= 0) (void)retried([&] { return ::fsync(descriptor.number); });
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
    file.write(bytes);
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
  appendWhole(OpenFile(call, name, path, O_WRONLY | O_CREAT | O_APPEND), bytes);
}

FileContent contentOf(const char* call, const std::string& name, const fs::path& path) {
  constexpr std::int64_t kNanoseconds = 1'000'000'000;
  struct stat found;
  if (::stat(path.c_str(), &found) != 0) failWithErrno(call, name);
  return {found.st_dev, found.st_ino, found.st_mtim.tv_sec * kNanoseconds + found.st_mtim.tv_nsec,
          found.st_size};
}

}  // namespace vorn
