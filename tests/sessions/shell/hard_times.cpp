#include "sessions/shell/hard_times.h"

#include <linux/capability.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kPassOverPermissions = 1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH;

struct Capabilities {
  __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
  __user_cap_data_struct data[2] = {};
};

void require(bool succeeded, const char* what) {
  if (!succeeded) throw std::system_error(errno, std::generic_category(), what);
}

Capabilities capabilities() {
  Capabilities current;
  require(::syscall(SYS_capget, &current.header, current.data) == 0, "capget");
  return current;
}

void setEffective(std::uint32_t effective) {
  Capabilities changed = capabilities();
  changed.data[0].effective = effective;
  require(::syscall(SYS_capset, &changed.header, changed.data) == 0, "capset");
}

std::uint64_t limitFileSize(std::uint64_t bytes) {
  rlimit limit{};
  require(::getrlimit(RLIMIT_FSIZE, &limit) == 0, "getrlimit");
  const std::uint64_t before = limit.rlim_cur;
  limit.rlim_cur = bytes;
  require(::setrlimit(RLIMIT_FSIZE, &limit) == 0, "setrlimit");
  return before;
}

}  // namespace

OrdinaryRights::OrdinaryRights() : effective_(capabilities().data[0].effective) {
  setEffective(effective_ & ~kPassOverPermissions);
}

OrdinaryRights::~OrdinaryRights() {
  setEffective(effective_);
}

FullDisk::FullDisk(std::uint64_t bytesAFile) {
  ::signal(SIGXFSZ, SIG_IGN);  // the write fails instead
  before_ = limitFileSize(bytesAFile);
}

FullDisk::~FullDisk() {
  limitFileSize(before_);
  ::signal(SIGXFSZ, SIG_DFL);
}

void makeReadOnly(const fs::path& folder) {
  fs::permissions(folder, fs::perms(0555));
}

void makeWritable(const fs::path& folder) {
  fs::permissions(folder, fs::perms(0755));
}

void makeUnreadable(const fs::path& file) {
  fs::permissions(file, fs::perms(0));
}

}  // namespace vorn
