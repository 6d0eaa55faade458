#include "platform/desktop/caption_painter.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>

namespace vorn {
namespace {

constexpr std::size_t kMostTexts = 8;
constexpr int kLinesInWindow = 12;
constexpr int kMargin = 8;  ///< pixels
constexpr SDL_Color kLatest{255, 255, 255, 255}, kEarlier{150, 150, 150, 255};

/// The desktop's usual font; empty where it has none.
std::string usualFont() {
  FcConfig* config = FcInitLoadConfigAndFonts();
  FcPattern* wanted = FcNameParse(reinterpret_cast<const FcChar8*>("sans:bold"));
  FcConfigSubstitute(config, wanted, FcMatchPattern);
  FcDefaultSubstitute(wanted);
  FcResult result;
  FcPattern* found = FcFontMatch(config, wanted, &result);
  FcChar8* file = nullptr;
  const bool hasFile = found != nullptr && FcPatternGetString(found, FC_FILE, 0, &file) == FcResultMatch;
  std::string path = hasFile ? reinterpret_cast<const char*>(file) : "";
  if (found != nullptr) {
    FcPatternDestroy(found);
  }
  FcPatternDestroy(wanted);
  FcConfigDestroy(config);
  return path;
}

}  // namespace

CaptionPainter::CaptionPainter() : font_(nullptr, TTF_CloseFont) {
  constexpr int kAnySize = 20;
  if (TTF_Init() == 0) {
    font_.reset(TTF_OpenFont(usualFont().c_str(), kAnySize));
  }
}

CaptionPainter::~CaptionPainter() {
  font_.reset();
  if (TTF_WasInit() != 0) {
    TTF_Quit();
  }
}

void CaptionPainter::add(const std::string& text) {
  texts_.push_front(text.substr(std::min(text.find_first_not_of(' '), text.size())));
  if (texts_.size() > kMostTexts) {
    texts_.pop_back();
  }
}

void CaptionPainter::paint(SDL_Surface& surface) {
  SDL_FillRect(&surface, nullptr, 0);
  if (!font_) {
    return;
  }
  TTF_SetFontSize(font_.get(), surface.h / kLinesInWindow);
  int top = kMargin;
  for (const std::string& text : texts_) {
    if (top < surface.h) {
      top = paintText(surface, text, &text == &texts_.front() ? kLatest : kEarlier, top);
    }
  }
}

/// Returns where the next text goes.
int CaptionPainter::paintText(SDL_Surface& surface, const std::string& text, SDL_Color colour, int top) {
  const auto width = static_cast<std::uint32_t>(std::max(surface.w - 2 * kMargin, 1));
  const std::unique_ptr<SDL_Surface, void (*)(SDL_Surface*)> letters(
      TTF_RenderUTF8_Blended_Wrapped(font_.get(), text.c_str(), colour, width), SDL_FreeSurface);
  if (!letters) {
    return top;
  }
  SDL_Rect place{kMargin, top, 0, 0};
  SDL_BlitSurface(letters.get(), nullptr, &surface, &place);
  return top + letters->h;
}

}  // namespace vorn
