/// What is wrong at the start, with nobody at standard error: a box says it.

#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <string>
#include <thread>

namespace vorn {
namespace {

/// The game as Explorer starts it: without streams. Ended with the test, however that ends.
class GameWithoutStreams {
 public:
  GameWithoutStreams() {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    isStarted_ = ::CreateProcessW(L"" VORN_PROGRAM, nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr,
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
    wchar_t text[1000] = L"";
    ::SendMessageW(part, WM_GETTEXT, 1000, reinterpret_cast<LPARAM>(text));
    *reinterpret_cast<std::wstring*>(all) += std::wstring(text) + L'\n';
    return TRUE;
  };
  ::EnumChildWindows(box, take, reinterpret_cast<LPARAM>(&words));
  return words;
}

TEST(WindowsProblem, IsToldInABoxWhereNobodySeesStandardError) {
  ::SetEnvironmentVariableW(L"APPDATA",
                            L"Z:\\dev\\null");  // no folder, so there can be none for the game in it
  const GameWithoutStreams game;
  ASSERT_TRUE(game.isStarted());
  const HWND box = boxOf(game);
  ASSERT_NE(box, nullptr);
  EXPECT_NE(wordsOf(box).find(L"dev\\null"), std::wstring::npos);
  ::PostMessageW(box, WM_COMMAND, IDOK, 0);
  EXPECT_EQ(game.exitStatus(), 1u);
}

}  // namespace
}  // namespace vorn
