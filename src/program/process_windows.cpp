#include <fcntl.h>
#include <io.h>
#include <windows.h>
// After windows.h.
#include <shellapi.h>

#include <cstdio>
#include <filesystem>
#include <iostream>

#include "platform/common/utf8_path.h"
#include "program/process.h"

namespace vorn {
namespace {

bool errorsAreSeen = true;

/// A program with windows has no console: where it was started from one, and its streams
/// lead nowhere else, what it says is to be seen there.
void openStandardStreams() {
  struct Stream {
    DWORD number;
    const wchar_t* console;
    const wchar_t* mode;
    std::FILE* file;
  };
  const bool hasConsole = ::AttachConsole(ATTACH_PARENT_PROCESS) != 0;
  if (hasConsole) ::SetConsoleOutputCP(CP_UTF8);
  const Stream streams[] = {{STD_INPUT_HANDLE, L"CONIN$", L"rb", stdin},
                            {STD_OUTPUT_HANDLE, L"CONOUT$", L"wb", stdout},
                            {STD_ERROR_HANDLE, L"CONOUT$", L"wb", stderr}};
  for (const Stream& stream : streams) {
    const HANDLE handle = ::GetStdHandle(stream.number);
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE) {
      if (stream.file == stderr) errorsAreSeen = hasConsole;
      (void)::_wfreopen(hasConsole ? stream.console : L"NUL", stream.mode, stream.file);
    }
    ::_setmode(::_fileno(stream.file), _O_BINARY);  // scripts, traces and sound are the same everywhere
  }
}

}  // namespace

std::vector<std::string> prepareProcess(int, char**) {
  openStandardStreams();
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(std::filesystem::path(words[i]).string());
  ::LocalFree(words);
  return arguments;
}

void tellProblem(const std::string& text) {
  std::cerr << text << std::endl;
  if (errorsAreSeen) return;
  // Every screen reader reads such a box.
  ::MessageBoxW(nullptr, utf8Path(text).wstring().c_str(), L"Vorn 1 TTS", MB_ICONERROR | MB_SETFOREGROUND);
}

}  // namespace vorn
