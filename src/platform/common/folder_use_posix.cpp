#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "platform/common/folder_use.h"

namespace vorn {
namespace {

// The mark is a lock of one kind and the short lock one of another: they do not
// know of each other, so that the holder of a mark need not give it up to lock.

struct flock wholeFolder(short type) {
  struct flock range {};
  range.l_type = type;
  range.l_whence = SEEK_SET;
  return range;
}

class HeldLock : public FolderLock {
 public:
  explicit HeldLock(int folder) : folder_(folder) {}
  ~HeldLock() override { flock(folder_, LOCK_UN); }
  HeldLock(const HeldLock&) = delete;
  HeldLock& operator=(const HeldLock&) = delete;

 private:
  const int folder_;
};

}  // namespace

struct FolderUse::Folder {
  const int descriptor;
  ~Folder() { close(descriptor); }
};

FolderUse::FolderUse(const std::filesystem::path& folder) {
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor >= 0) folder_.reset(new Folder{descriptor});
}

FolderUse::~FolderUse() = default;

bool FolderUse::claim() {
  if (!folder_) return false;
  struct flock others = wholeFolder(F_WRLCK);
  const bool isInUse = fcntl(folder_->descriptor, F_OFD_GETLK, &others) == 0 && others.l_type != F_UNLCK;
  struct flock mark = wholeFolder(F_RDLCK);
  fcntl(folder_->descriptor, F_OFD_SETLK, &mark);
  return isInUse;
}

std::unique_ptr<FolderLock> FolderUse::lock() {
  using Clock = std::chrono::steady_clock;
  if (!folder_) return nullptr;
  const Clock::time_point end = Clock::now() + std::chrono::seconds(1);
  while (flock(folder_->descriptor, LOCK_EX | LOCK_NB) != 0) {
    const bool isHeldByAnother = errno == EWOULDBLOCK || errno == EINTR;
    if (!isHeldByAnother || Clock::now() >= end) {
      return nullptr;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return std::make_unique<HeldLock>(folder_->descriptor);
}

}  // namespace vorn
