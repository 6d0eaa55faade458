#include <windows.h>

#include <system_error>

#include "platform/desktop/launcher.h"
#include "platform/errors.h"

namespace vorn {

void launch(const std::filesystem::path& program) {
  const std::filesystem::path whole = std::filesystem::absolute(program);
  std::wstring quoted = L"\"" + whole.wstring() + L"\"";
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION started{};
  const bool hasStarted =
      ::CreateProcessW(whole.c_str(), quoted.data(), nullptr, nullptr, FALSE, CREATE_NEW_PROCESS_GROUP,
                       nullptr, whole.parent_path().c_str(), &start, &started) != 0;
  if (!hasStarted) {
    const std::error_code error(static_cast<int>(::GetLastError()), std::system_category());
    throw PlatformError("Shell", whole.string(), error.message());
  }
  ::CloseHandle(started.hThread);
  ::CloseHandle(started.hProcess);
}

}  // namespace vorn
