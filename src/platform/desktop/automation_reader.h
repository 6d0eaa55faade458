/// The player's screen reader by way of Windows' UI Automation: the game's window raises a notification for
/// each text, which screen readers read and show in braille, since Windows 10 version 1709.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/common/screen_reader.h"

struct HWND__;

namespace vorn {

class AutomationReader : public ScreenReader {
 public:
  /// `window`: the game's, of this thread, which must live longer. `library`: where UI Automation is found.
  explicit AutomationReader(HWND__* window, const std::filesystem::path& library = "UIAutomationCore.dll");
  ~AutomationReader() override;

  std::string problem() override { return problem_; }
  bool isListening() override;
  void tell(const std::string& text, bool interrupts) override;

 private:
  struct Library;
  class Provider;

  std::string problem_;
  std::shared_ptr<const Library> library_;
  std::unique_ptr<Provider, void (*)(Provider*)> provider_;  ///< null where there is a problem
};

}  // namespace vorn
