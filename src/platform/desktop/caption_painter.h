/// Writes what is being said into the window, for whoever would rather read it:
/// the latest text in white at the top, the ones before it in grey below. Where
/// the machine has no font the window stays black.
#pragma once

#include <SDL_surface.h>

#include <deque>
#include <optional>
#include <string>

#include "platform/desktop/lettering.h"

namespace vorn {

class CaptionPainter {
 public:
  /// From now on `text` (UTF-8) is the latest.
  void add(const std::string& text);
  /// Replaces all of `surface`; the letters grow with it.
  void paint(SDL_Surface& surface);

 private:
  int paintText(SDL_Surface& surface, const std::string& text, SDL_Color colour, int top);

  std::optional<Lettering> lettering_;  ///< from the first text on: finding a font takes its time
  std::deque<std::string> texts_;       ///< the latest first
};

}  // namespace vorn
