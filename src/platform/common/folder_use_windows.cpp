#include <windows.h>

#include <chrono>
#include <string>
#include <thread>

#include "platform/common/folder_use.h"

namespace vorn {
namespace {

/// A named object of the system's: it is there for as long as somebody holds it,
/// and whoever asks for it learns whether somebody does.
class NamedObject {
 public:
  explicit NamedObject(const std::wstring& name)
      : handle_(::CreateEventW(nullptr, TRUE, FALSE, name.c_str())) {
    wasThere_ =
        ::GetLastError() == ERROR_ALREADY_EXISTS || handle_ == nullptr;  // another user's cannot be had
  }
  ~NamedObject() {
    if (handle_ != nullptr) ::CloseHandle(handle_);
  }
  NamedObject(const NamedObject&) = delete;
  NamedObject& operator=(const NamedObject&) = delete;

  bool wasThere() const { return wasThere_; }

 private:
  HANDLE handle_;
  bool wasThere_;
};

class HeldLock : public FolderLock {
 public:
  explicit HeldLock(std::unique_ptr<NamedObject> object) : object_(std::move(object)) {}

 private:
  std::unique_ptr<NamedObject> object_;
};

/// The number by which the system tells a folder from all others, as a text; empty where it cannot be opened.
std::wstring identityOf(const std::filesystem::path& folder) {
  const HANDLE handle = ::CreateFileW(folder.c_str(), FILE_READ_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return L"";
  BY_HANDLE_FILE_INFORMATION found;
  const bool isKnown = ::GetFileInformationByHandle(handle, &found) != 0;
  ::CloseHandle(handle);
  if (!isKnown) return L"";
  return std::to_wstring(found.dwVolumeSerialNumber) + L"-" + std::to_wstring(found.nFileIndexHigh) + L"-" +
         std::to_wstring(found.nFileIndexLow);
}

}  // namespace

struct FolderUse::Folder {
  const std::wstring identity;
  std::unique_ptr<NamedObject> mark;
};

FolderUse::FolderUse(const std::filesystem::path& folder) {
  std::wstring identity = identityOf(folder);
  if (!identity.empty()) folder_.reset(new Folder{std::move(identity), nullptr});
}

FolderUse::~FolderUse() = default;

bool FolderUse::claim() {
  if (!folder_) return false;
  folder_->mark = std::make_unique<NamedObject>(L"Global\\vorn1-use-" + folder_->identity);
  return folder_->mark->wasThere();
}

std::unique_ptr<FolderLock> FolderUse::lock() {
  using Clock = std::chrono::steady_clock;
  if (!folder_) return nullptr;
  const Clock::time_point end = Clock::now() + std::chrono::seconds(1);
  for (;;) {
    auto object = std::make_unique<NamedObject>(L"Global\\vorn1-lock-" + folder_->identity);
    if (!object->wasThere()) return std::make_unique<HeldLock>(std::move(object));
    object.reset();
    if (Clock::now() >= end) return nullptr;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

}  // namespace vorn
