#include <windows.h>

#include <memory>
#include <type_traits>

#include "platform/common/utf8_path.h"
#include "platform/desktop/lettering.h"

namespace vorn {
namespace {

constexpr UINT kLayout = DT_WORDBREAK | DT_NOPREFIX;

/// What the system draws with, given back when it is no longer needed.
template <typename Handle>
using Drawing = std::unique_ptr<std::remove_pointer_t<Handle>, BOOL(WINAPI*)(HGDIOBJ)>;

}  // namespace

struct Lettering::Font {
  const HDC canvas = ::CreateCompatibleDC(nullptr);
  ~Font() { ::DeleteDC(canvas); }
};

Lettering::Lettering() : font_(std::make_unique<Font>()) {}

Lettering::~Lettering() = default;

/// Drawn white on black by the system; how white a place is says how much of the colour is there.
Lettering::Picture Lettering::write(const std::string& text, SDL_Color colour, int height, int width) {
  Picture picture(nullptr, SDL_FreeSurface);
  const HDC canvas = font_->canvas;
  const std::wstring letters = utf8Path(text).wstring();
  const auto count = static_cast<int>(letters.size());
  const Drawing<HFONT> font(
      ::CreateFontW(height, 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                    CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH | FF_SWISS, L"Segoe UI"),
      ::DeleteObject);
  const HGDIOBJ fontBefore = ::SelectObject(canvas, font.get());
  RECT area{0, 0, width, 0};
  ::DrawTextW(canvas, letters.c_str(), count, &area, kLayout | DT_CALCRECT);
  BITMAPINFO format{};
  format.bmiHeader.biSize = sizeof format.bmiHeader;
  format.bmiHeader.biWidth = width;
  format.bmiHeader.biHeight = -area.bottom;  // the first row on top
  format.bmiHeader.biPlanes = 1;
  format.bmiHeader.biBitCount = 32;
  void* pixels = nullptr;
  const Drawing<HBITMAP> drawn(::CreateDIBSection(canvas, &format, DIB_RGB_COLORS, &pixels, nullptr, 0),
                               ::DeleteObject);
  if (drawn != nullptr) {
    const HGDIOBJ bitmapBefore = ::SelectObject(canvas, drawn.get());
    ::SetBkMode(canvas, TRANSPARENT);
    ::SetTextColor(canvas, RGB(255, 255, 255));
    area.right = width;
    ::DrawTextW(canvas, letters.c_str(), count, &area, kLayout);
    ::GdiFlush();
    picture.reset(SDL_CreateRGBSurfaceWithFormat(0, width, area.bottom, 32, SDL_PIXELFORMAT_ARGB8888));
    if (picture) {
      const auto* const whiteness = static_cast<const std::uint32_t*>(pixels);
      for (int y = 0; y < area.bottom; ++y) {
        auto* const row = reinterpret_cast<std::uint32_t*>(static_cast<std::uint8_t*>(picture->pixels) +
                                                           y * picture->pitch);
        for (int x = 0; x < width; ++x) {
          const std::uint32_t amount = whiteness[y * width + x] & 0xFF;
          row[x] = amount << 24 | static_cast<std::uint32_t>(colour.r << 16 | colour.g << 8 | colour.b);
        }
      }
    }
    ::SelectObject(canvas, bitmapBefore);
  }
  ::SelectObject(canvas, fontBefore);
  return picture;
}

}  // namespace vorn
