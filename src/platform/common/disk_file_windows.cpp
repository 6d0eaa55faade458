#include <windows.h>

#include <algorithm>
#include <limits>
#include <string_view>
#include <system_error>
#include <thread>

#include "platform/common/disk_file.h"
#include "platform/common/file_names.h"
#include "platform/common/utf8_path.h"
#include "platform/common/whole_bytes.h"
#include "platform/errors.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// In the words that other systems use for it, where there are such.
[[noreturn]] void fail(const char* call, const std::string& name) {
  const std::error_code error(static_cast<int>(::GetLastError()), std::system_category());
  throw PlatformError(call, name, error.default_error_condition().message());
}

/// Virus scanners and indexers hold a file for moments: makes a call that they hinder again, for a while.
template <typename Call>
bool patiently(Call call) {
  constexpr int kTries = 50;
  constexpr auto kMoment = std::chrono::milliseconds(10);
  for (int i = 1;; ++i) {
    if (call()) return true;
    const DWORD error = ::GetLastError();
    const bool mayPass = error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
    if (!mayPass || i == kTries) return false;
    std::this_thread::sleep_for(kMoment);
  }
}

DWORD pieceOf(std::size_t bytes) {
  return static_cast<DWORD>(std::min<std::size_t>(bytes, std::numeric_limits<std::int32_t>::max()));
}

/// An open regular file; closing is never skipped.
class OpenFile {
 public:
  OpenFile(const char* call, const std::string& name, const fs::path& path, DWORD access, DWORD creation)
      : call_(call), name_(name) {
    const bool isOpen = patiently([&] {
      handle_ =
          ::CreateFileW(path.c_str(), access, kShared, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr);
      return handle_ != INVALID_HANDLE_VALUE;
    });
    if (!isOpen) {
      std::error_code ignored;
      if (fs::is_directory(path, ignored)) throw PlatformError(call_, name_, kNoRegularFile);
      fail();
    }
    if (::GetFileType(handle_) != FILE_TYPE_DISK) {
      ::CloseHandle(handle_);
      throw PlatformError(call_, name_, kNoRegularFile);
    }
  }
  ~OpenFile() { ::CloseHandle(handle_); }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  std::uint64_t size() const {
    LARGE_INTEGER result;
    if (::GetFileSizeEx(handle_, &result) == 0) fail();
    return static_cast<std::uint64_t>(result.QuadPart);
  }
  /// All its bytes, or as many as `atMost`.
  std::string read(std::size_t atMost) const {
    return readAll(size(), atMost, [this](char* to, std::size_t most) {
      DWORD got = 0;
      if (::ReadFile(handle_, to, pieceOf(most), &got, nullptr) == 0) fail();
      return got;
    });
  }
  /// At the end, wherever another program has put it meanwhile.
  void write(std::string_view bytes) const {
    writeAll(bytes, [this](const char* from, std::size_t most) {
      OVERLAPPED end{};
      end.Offset = end.OffsetHigh = std::numeric_limits<DWORD>::max();
      DWORD put = 0;
      if (::WriteFile(handle_, from, pieceOf(most), &put, &end) == 0) fail();
      return put;
    });
  }
  void reachDisk() const {
    if (::FlushFileBuffers(handle_) == 0) fail();
  }
  void cutTo(std::uint64_t length) const {
    LARGE_INTEGER position;
    position.QuadPart = static_cast<LONGLONG>(length);
    if (::SetFilePointerEx(handle_, position, nullptr, FILE_BEGIN) != 0) ::SetEndOfFile(handle_);
  }
  BY_HANDLE_FILE_INFORMATION information() const {
    BY_HANDLE_FILE_INFORMATION result;
    if (::GetFileInformationByHandle(handle_, &result) == 0) fail();
    return result;
  }

 private:
  [[noreturn]] void fail() const { vorn::fail(call_, name_); }

  const char* call_;
  const std::string& name_;
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

std::uint64_t joined(DWORD high, DWORD low) {
  return static_cast<std::uint64_t>(high) << 32 | low;
}

/// COM1 and its like stand in every folder, with whatever extension.
bool isDevice(std::string name) {
  constexpr std::string_view kDevices[] = {"con", "prn", "aux", "nul", "conin$", "conout$"};
  name.resize(std::min(name.find('.'), name.size()));
  name.resize(name.find_last_not_of(' ') + 1);
  name = lowerCased(name);
  const bool isNumbered = name.size() == 4 && name[3] >= '0' && name[3] <= '9';
  return (isNumbered && (name.starts_with("com") || name.starts_with("lpt"))) ||
         std::count(std::begin(kDevices), std::end(kDevices), name) > 0;
}

/// Whether it has been marked to stay as it is, which a move onto it does not heed on every system.
bool isReadOnly(const fs::path& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

}  // namespace

bool isFileName(const std::string& name) {
  const bool hasOddLetter = std::any_of(name.begin(), name.end(), [](char c) {
    return static_cast<unsigned char>(c) < ' ' ||
           std::string_view("<>:\"/\\|?*").find(c) != std::string::npos;
  });
  return !name.empty() && !hasOddLetter && name.back() != '.' && name.back() != ' ' && !isDevice(name);
}

bool standsAs(const fs::path& folder, const std::string& name) {
  WIN32_FIND_DATAW found;
  const fs::path path = folder / utf8Path(name);
  const HANDLE search = ::FindFirstFileW(path.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return false;
  ::FindClose(search);
  return path.filename() == found.cFileName && (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::string readFile(const char* call, const std::string& name, const fs::path& path, std::size_t atMost) {
  return OpenFile(call, name, path, GENERIC_READ, OPEN_EXISTING).read(atMost);
}

void replaceFile(const char* call, const std::string& name, const fs::path& target, const fs::path& temporary,
                 const std::string& bytes) {
  try {
    {
      const OpenFile file(call, name, temporary, GENERIC_WRITE, CREATE_NEW);
      file.write(bytes);
      file.reachDisk();
    }
    if (isReadOnly(target)) {
      ::SetLastError(ERROR_ACCESS_DENIED);
      fail(call, name);
    }
    const bool isMoved = patiently([&] {
      return ::MoveFileExW(temporary.c_str(), target.c_str(),
                           MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    });
    if (!isMoved) fail(call, name);
  } catch (...) {
    ::DeleteFileW(temporary.c_str());
    throw;
  }
}

void appendToFile(const char* call, const std::string& name, const fs::path& path, const std::string& bytes) {
  appendWhole(OpenFile(call, name, path, GENERIC_WRITE, OPEN_ALWAYS), bytes);
}

FileContent contentOf(const char* call, const std::string& name, const fs::path& path) {
  const BY_HANDLE_FILE_INFORMATION found =
      OpenFile(call, name, path, FILE_READ_ATTRIBUTES, OPEN_EXISTING).information();
  return {found.dwVolumeSerialNumber, joined(found.nFileIndexHigh, found.nFileIndexLow),
          static_cast<std::int64_t>(
              joined(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime)),
          static_cast<std::int64_t>(joined(found.nFileSizeHigh, found.nFileSizeLow))};
}

}  // namespace vorn
