#include "platform/desktop/caption_painter.h"

#include <algorithm>

namespace vorn {
namespace {

constexpr std::size_t kMostTexts = 8;
constexpr int kLinesInWindow = 12;
constexpr int kMargin = 8;  ///< pixels
constexpr SDL_Color kLatest{255, 255, 255, 255}, kEarlier{150, 150, 150, 255};

}  // namespace

void CaptionPainter::add(const std::string& text) {
  texts_.push_front(text.substr(std::min(text.find_first_not_of(' '), text.size())));
  if (texts_.size() > kMostTexts) {
    texts_.pop_back();
  }
}

void CaptionPainter::paint(SDL_Surface& surface) {
  SDL_FillRect(&surface, nullptr, 0);
  int top = kMargin;
  for (const std::string& text : texts_) {
    if (top < surface.h) {
      top = paintText(surface, text, &text == &texts_.front() ? kLatest : kEarlier, top);
    }
  }
}

/// Returns where the next text goes.
int CaptionPainter::paintText(SDL_Surface& surface, const std::string& text, SDL_Color colour, int top) {
  const int width = std::max(surface.w - 2 * kMargin, 1);
  if (!lettering_) {
    lettering_.emplace();
  }
  const Lettering::Picture letters = lettering_->write(text, colour, surface.h / kLinesInWindow, width);
  if (!letters) {
    return top;
  }
  SDL_Rect place{kMargin, top, 0, 0};
  SDL_BlitSurface(letters.get(), nullptr, &surface, &place);
  return top + letters->h;
}

}  // namespace vorn
