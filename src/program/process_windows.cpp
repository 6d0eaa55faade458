#include <fcntl.h>
#include <io.h>
#include <windows.h>
// After windows.h.
#include <shellapi.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "platform/common/utf8_path.h"
#include "program/process.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

bool answersAreSeen = true, problemsAreSeen = true;

bool isNowhere(HANDLE handle) {
  return handle == nullptr || handle == INVALID_HANDLE_VALUE;
}

/// One of the three, as the system knows it and as the program does.
struct StandardStream {
  DWORD number;
  const wchar_t* console;
  std::ios& stream;
  std::ios::openmode mode;
  std::FILE* file;
  bool isNowhere = vorn::isNowhere(::GetStdHandle(number));

  /// Leads to a console or to nothing from now on, where it has led nowhere.
  void open(bool hasConsole) const {
    const fs::path target = hasConsole ? console : L"NUL";
    auto* const buffer = new std::filebuf;  // for good: what is left in it is written last of all
    if (buffer->open(target, mode | std::ios::binary) != nullptr) stream.rdbuf(buffer);
    ::SetStdHandle(number,
                   ::CreateFileW(target.c_str(), GENERIC_READ | GENERIC_WRITE,
                                 FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
  }
};

/// A program with windows has no console: where it was started from one, and its streams
/// lead nowhere else, what it says is to be seen there.
void openStandardStreams() {
  // Looked at before there is a console, which the system puts where nothing is.
  const StandardStream streams[] = {{STD_INPUT_HANDLE, L"CONIN$", std::cin, std::ios::in, stdin},
                                    {STD_OUTPUT_HANDLE, L"CONOUT$", std::cout, std::ios::out, stdout},
                                    {STD_ERROR_HANDLE, L"CONOUT$", std::cerr, std::ios::out, stderr}};
  const bool isAttached = ::AttachConsole(ATTACH_PARENT_PROCESS) != 0;
  const bool hasConsole =
      isAttached || ::GetLastError() == ERROR_ACCESS_DENIED;  // that is: it has one already
  if (hasConsole) ::SetConsoleOutputCP(CP_UTF8);
  for (const StandardStream& stream : streams) {
    if (stream.isNowhere) {
      stream.open(hasConsole);
    } else {
      ::_setmode(::_fileno(stream.file), _O_BINARY);  // scripts, traces and sound are the same everywhere
    }
  }
  answersAreSeen = hasConsole || !streams[1].isNowhere;
  problemsAreSeen = hasConsole || !streams[2].isNowhere;
}

/// Every screen reader reads such a box.
void showInBox(const std::string& text, UINT icon) {
  ::MessageBoxW(nullptr, utf8Path(text).wstring().c_str(), L"Vorn 1 TTS", icon | MB_SETFOREGROUND);
}

}  // namespace

std::vector<std::string> prepareProcess(int, char**) {
  openStandardStreams();
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(fs::path(words[i]).string());
  ::LocalFree(words);
  return arguments;
}

void tellAnswer(const std::string& text) {
  std::cout << text << std::endl;
  if (!answersAreSeen) showInBox(text, MB_ICONINFORMATION);
}

void tellProblem(const std::string& text) {
  std::cerr << text << std::endl;
  if (!problemsAreSeen) showInBox(text, MB_ICONERROR);
}

}  // namespace vorn
