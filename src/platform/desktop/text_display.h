/// Where spoken texts can be read with the fingers, or by the player's own screen reader.
#pragma once

#include <string>

namespace vorn {

class TextDisplay {
 public:
  virtual ~TextDisplay() = default;
  TextDisplay(const TextDisplay&) = delete;
  TextDisplay& operator=(const TextDisplay&) = delete;

  /// Shows `text`, UTF-8 without control characters. Does not wait.
  virtual void show(const std::string& text) = 0;
  /// Whether the game's window is in front, so that the display is the game's. Does not wait.
  virtual void setInFront(bool isInFront) = 0;

 protected:
  TextDisplay() = default;
};

}  // namespace vorn
