#include <SDL_ttf.h>
#include <fontconfig/fontconfig.h>

#include "platform/desktop/lettering.h"

namespace vorn {
namespace {

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

struct Lettering::Font {
  std::unique_ptr<TTF_Font, void (*)(TTF_Font*)> font{nullptr, TTF_CloseFont};
};

Lettering::Lettering() : font_(std::make_unique<Font>()) {
  constexpr int kAnySize = 20;
  if (TTF_Init() == 0) {
    font_->font.reset(TTF_OpenFont(usualFont().c_str(), kAnySize));
  }
}

Lettering::~Lettering() {
  font_.reset();
  if (TTF_WasInit() != 0) {
    TTF_Quit();
  }
}

Lettering::Picture Lettering::write(const std::string& text, SDL_Color colour, int height, int width) {
  TTF_Font* const font = font_->font.get();
  if (font == nullptr) {
    return {nullptr, SDL_FreeSurface};
  }
  TTF_SetFontSize(font, height);
  return {TTF_RenderUTF8_Blended_Wrapped(font, text.c_str(), colour, static_cast<std::uint32_t>(width)),
          SDL_FreeSurface};
}

}  // namespace vorn
