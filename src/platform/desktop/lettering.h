/// Texts as pictures, in the letters that this system's desktop has.
#pragma once

#include <SDL_surface.h>

#include <memory>
#include <string>

namespace vorn {

class Lettering {
 public:
  using Picture = std::unique_ptr<SDL_Surface, void (*)(SDL_Surface*)>;

  Lettering();
  ~Lettering();
  Lettering(const Lettering&) = delete;
  Lettering& operator=(const Lettering&) = delete;

  /// `text` (UTF-8) in letters of `height` pixels, broken into lines of at most `width`.
  /// Null where there is nothing to write it with.
  Picture write(const std::string& text, SDL_Color colour, int height, int width);

 private:
  struct Font;
  std::unique_ptr<Font> font_;
};

}  // namespace vorn
