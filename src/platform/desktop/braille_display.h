/// What is being said, on the braille display of the player's desktop, for as long
/// as the game's window is in front. A thread of its own talks to the display's
/// daemon (BrlAPI), so none of the procedures waits; where there is no daemon
/// nothing happens. The display's panning keys move through long texts.
#pragma once

#include <memory>
#include <string>

#include "platform/desktop/text_display.h"

namespace vorn {

class BrailleDisplay : public TextDisplay {
 public:
  /// `window`: as the X server numbers the game's window; -1 elsewhere.
  explicit BrailleDisplay(int window);
  ~BrailleDisplay() override;  ///< leaves the display to others; waits for a daemon, but not long

  void show(const std::string& text) override;
  void setInFront(bool isInFront) override;

 private:
  struct Line;

  static void serve(const std::shared_ptr<Line>& line, int window);

  const std::shared_ptr<Line> line_;  ///< the thread's too: a hanging daemon may keep it
};

}  // namespace vorn
