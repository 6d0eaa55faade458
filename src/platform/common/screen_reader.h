/// The player's screen reader as the game finds it: it reads what it is given, aloud or in braille, and
/// does not tell when it has done so. All procedures are for one thread, the game's; none of them waits.
#pragma once

#include <string>

namespace vorn {

class ScreenReader {
 public:
  virtual ~ScreenReader() = default;
  ScreenReader(const ScreenReader&) = delete;
  ScreenReader& operator=(const ScreenReader&) = delete;

  /// Why there is no way to any screen reader; empty where there is one. The same at all times.
  virtual std::string problem() = 0;
  /// Whether anybody takes in what is told.
  virtual bool isListening() = 0;
  /// Has it read `text` (UTF-8), at once where it `interrupts`, else behind what it is still reading.
  virtual void tell(const std::string& text, bool interrupts) = 0;

 protected:
  ScreenReader() = default;
};

}  // namespace vorn
