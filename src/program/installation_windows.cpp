#include <windows.h>

#include <cstdlib>
#include <string>

#include "program/installation.h"
#include "program/process.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

fs::path programFolder() {
  constexpr DWORD kLongestPath = 32768;
  std::wstring name(kLongestPath, L'\0');
  name.resize(::GetModuleFileNameW(nullptr, name.data(), kLongestPath));
  return fs::path(name).parent_path();
}

}  // namespace

fs::path installedSounds() {
  return programFolder() / "sounds";
}

fs::path playersData() {
  const wchar_t* const data = ::_wgetenv(L"APPDATA");
  return data != nullptr && *data != L'\0' ? fs::path(data) : programFolder();
}

void makeSounds(const fs::path&) {
  tellProblem("Sounds are missing: take the whole folder of the game out of its archive again.");
}

}  // namespace vorn
