/// What screen readers are told by UI Automation, of which automation_double.cpp takes the place.

#include "platform/desktop/automation_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <optional>

#include "support/temporary_folder.h"

namespace vorn {
namespace {

using testing::HasSubstr;

constexpr LPARAM kRootObject = -25;

/// A window that needs no display.
class HiddenWindow {
 public:
  HiddenWindow()
      : handle_(
            ::CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {}
  ~HiddenWindow() { ::DestroyWindow(handle_); }
  HiddenWindow(const HiddenWindow&) = delete;
  HiddenWindow& operator=(const HiddenWindow&) = delete;
  HWND handle() const { return handle_; }

 private:
  const HWND handle_;
};

class AutomationReaderTest : public testing::Test {
 protected:
  AutomationReaderTest() {
    ::_wputenv_s(L"VORN_UIA_LOG", (folder.path() / "log").c_str());
    ::_wputenv_s(L"VORN_UIA_LISTENER", L"");
  }

  /// What UI Automation has been asked for so far.
  std::string asked() const { return folder.has("log") ? folder.read("log") : ""; }

  TemporaryFolder folder;
  HiddenWindow window;
  std::optional<AutomationReader> reader{std::in_place, window.handle(), VORN_AUTOMATION_DOUBLE};
};

TEST_F(AutomationReaderTest, RaisesANotificationForEachTextInTurn) {
  ASSERT_EQ(reader->problem(), "");
  reader->tell(" Start Game. ", false);
  reader->tell("Žižkov café", true);
  reader->tell("on", false);
  // 4: of no particular kind; 1: at once, in place of all before; 2: in turn.
  EXPECT_EQ(
      asked(),
      "raise 4 2 Vorn 1 TTS| Start Game. \nraise 4 1 Vorn 1 TTS|Žižkov café\nraise 4 2 Vorn 1 TTS|on\n");
}

TEST_F(AutomationReaderTest, WindowSaysWhatItIsWhereUiAutomationAsks) {
  EXPECT_EQ(::SendMessageW(window.handle(), WM_GETOBJECT, 0, kRootObject), 42);
  EXPECT_EQ(asked(), "provider 2 50032 Vorn 1 TTS\n");
}

TEST_F(AutomationReaderTest, OtherMessagesGoToTheWindowAsBefore) {
  ::SendMessageW(window.handle(), WM_GETOBJECT, 0, OBJID_CLIENT);
  ::SetWindowTextW(window.handle(), L"Pits");
  wchar_t title[10] = L"";
  ::GetWindowTextW(window.handle(), title, 10);
  EXPECT_STREQ(title, L"Pits");
  EXPECT_EQ(asked(), "");
}

TEST_F(AutomationReaderTest, LeavesTheWindowAsItWas) {
  reader.reset();
  EXPECT_EQ(asked(), "gone\n");
  EXPECT_NE(::SendMessageW(window.handle(), WM_GETOBJECT, 0, kRootObject), 42);
  EXPECT_EQ(asked(), "gone\n");
}

TEST_F(AutomationReaderTest, KnowsWhetherAnybodyListens) {
  EXPECT_TRUE(reader->isListening());
  ::_wputenv_s(L"VORN_UIA_LISTENER", L"no");
  EXPECT_FALSE(reader->isListening());
}

TEST(AutomationReader, WithoutUiAutomationThereIsNoReader) {
  const HiddenWindow window;
  EXPECT_NE(AutomationReader(window.handle(), "VornNoSuchLibrary.dll").problem(), "");
}

TEST(AutomationReader, NorWhereUiAutomationKnowsNoNotifications) {
  const HiddenWindow window;
  EXPECT_THAT(AutomationReader(window.handle(), "kernel32.dll").problem(), HasSubstr("1709"));
}

}  // namespace
}  // namespace vorn
