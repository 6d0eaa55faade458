/// What the game has to tell before it is one, with nobody at its streams: a console shows it where there is
/// one, else a box.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <string>
#include <thread>

namespace vorn {
namespace {

using testing::HasSubstr;

/// The game as Explorer starts it: without streams. Ended with the test, however that ends.
class GameWithoutStreams {
 public:
  explicit GameWithoutStreams(const std::wstring& options = L"") {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    std::wstring line = L"vorn1 " + options;
    isStarted_ = ::CreateProcessW(L"" VORN_PROGRAM, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                  &start, &game_) != 0;
  }
  ~GameWithoutStreams() {
    if (!isStarted_) return;
    ::TerminateProcess(game_.hProcess, 99);
    ::CloseHandle(game_.hThread);
    ::CloseHandle(game_.hProcess);
  }
  GameWithoutStreams(const GameWithoutStreams&) = delete;
  GameWithoutStreams& operator=(const GameWithoutStreams&) = delete;

  bool isStarted() const { return isStarted_; }
  bool isRunning() const { return ::WaitForSingleObject(game_.hProcess, 0) == WAIT_TIMEOUT; }
  /// Its exit status, as soon as it has ended by itself.
  DWORD exitStatus() const {
    DWORD status = 0;
    ::WaitForSingleObject(game_.hProcess, 60000);
    ::GetExitCodeProcess(game_.hProcess, &status);
    return status;
  }
  DWORD number() const { return game_.dwProcessId; }

 private:
  PROCESS_INFORMATION game_{};
  bool isStarted_ = false;
};

/// The box of the game, once it has come up; null where the game has ended without one.
HWND boxOf(const GameWithoutStreams& game) {
  while (game.isRunning()) {
    const HWND box = ::FindWindowW(L"#32770", L"Vorn 1 TTS");
    DWORD owner = 0;
    if (box != nullptr && ::GetWindowThreadProcessId(box, &owner) != 0 && owner == game.number() &&
        ::IsWindowVisible(box) != 0) {
      return box;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return nullptr;
}

std::wstring wordsOf(HWND box) {
  std::wstring words;
  const auto take = [](HWND part, LPARAM all) -> BOOL {
    wchar_t text[10000] = L"";
    ::SendMessageW(part, WM_GETTEXT, 10000, reinterpret_cast<LPARAM>(text));
    *reinterpret_cast<std::wstring*>(all) += std::wstring(text) + L'\n';
    return TRUE;
  };
  ::EnumChildWindows(box, take, reinterpret_cast<LPARAM>(&words));
  return words;
}

/// Answers the box with OK. Returns what stood in it.
std::wstring answeredBox(const GameWithoutStreams& game) {
  const HWND box = boxOf(game);
  if (box == nullptr) return L"";
  const std::wstring words = wordsOf(box);
  ::PostMessageW(box, WM_COMMAND, IDOK, 0);
  return words;
}

/// The console of a command line, for as long as it lives.
class Console {
 public:
  Console() { ::AllocConsole(); }
  ~Console() { ::FreeConsole(); }
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  /// All that stands in it.
  std::wstring text() const {
    const HANDLE screen =
        ::CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      OPEN_EXISTING, 0, nullptr);
    CONSOLE_SCREEN_BUFFER_INFO size{};
    ::GetConsoleScreenBufferInfo(screen, &size);
    std::wstring text(static_cast<std::size_t>(size.dwSize.X * size.dwSize.Y), L' ');
    DWORD read = 0;
    ::ReadConsoleOutputCharacterW(screen, text.data(), static_cast<DWORD>(text.size()), {}, &read);
    ::CloseHandle(screen);
    text.resize(read);
    return text;
  }
};

TEST(WindowsProblem, IsToldInABoxWhereNobodySeesStandardError) {
  ::SetEnvironmentVariableW(L"APPDATA",
                            L"Z:\\dev\\null");  // no folder, so there can be none for the game in it
  const GameWithoutStreams game;
  ASSERT_TRUE(game.isStarted());
  EXPECT_THAT(answeredBox(game), HasSubstr(L"dev\\null"));
  EXPECT_EQ(game.exitStatus(), 1u);
}

TEST(WindowsProblem, OfTheCommandLineIsToldInABoxWhereNobodySeesStandardError) {
  const GameWithoutStreams game(L"--buffer many");
  ASSERT_TRUE(game.isStarted());
  EXPECT_THAT(answeredBox(game), HasSubstr(L"--buffer"));
  EXPECT_EQ(game.exitStatus(), 2u);
}

TEST(WindowsProblem, StandsInTheConsoleThatTheGameIsStartedFrom) {
  const Console console;
  const GameWithoutStreams game(L"--buffer many");
  ASSERT_TRUE(game.isStarted());
  EXPECT_EQ(boxOf(game), nullptr);
  EXPECT_EQ(game.exitStatus(), 2u);
  EXPECT_THAT(console.text(), HasSubstr(L"--buffer"));
}

TEST(WindowsAnswer, IsToldInABoxWhereNobodySeesStandardOutput) {
  const GameWithoutStreams game(L"--help");
  ASSERT_TRUE(game.isStarted());
  const std::wstring words = answeredBox(game);
  EXPECT_THAT(words, HasSubstr(L"--folder"));
  EXPECT_THAT(words, HasSubstr(L"--version"));
  EXPECT_EQ(game.exitStatus(), 0u);
}

TEST(WindowsAnswer, StandsInTheConsoleThatTheGameIsStartedFrom) {
  const Console console;
  const GameWithoutStreams game(L"--version");
  ASSERT_TRUE(game.isStarted());
  EXPECT_EQ(boxOf(game), nullptr);
  EXPECT_EQ(game.exitStatus(), 0u);
  EXPECT_THAT(console.text(), HasSubstr(L"Vorn 1 TTS"));
}

}  // namespace
}  // namespace vorn
