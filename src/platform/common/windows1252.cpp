#include "platform/common/windows1252.h"

#include <array>
#include <cstddef>

namespace vorn {
namespace {

/// Codes 0x80 .. 0x9F; every other code is its own character number.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void appendUtf8(std::string& out, unsigned character) {
  if (character < 0x80) {
    out += static_cast<char>(character);
  } else if (character < 0x800) {
    out += static_cast<char>(0xC0 | (character >> 6));
    out += static_cast<char>(0x80 | (character & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (character >> 12));
    out += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (character & 0x3F));
  }
}

}  // namespace

std::string utf8FromWindows1252(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (const char c : text) {
    const unsigned code = static_cast<unsigned char>(c);
    appendUtf8(out, code >= 0x80 && code < 0xA0 ? kUpperControls[code - 0x80] : code);
  }
  return out;
}

std::string windows1252FromUtf8(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    std::size_t size = 1;
    while (size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) {
      ++size;
    }
    int code = 0;
    while (code < 256 &&
           utf8FromWindows1252(std::string(1, static_cast<char>(code))) != text.substr(0, size)) {
      ++code;
    }
    out += code < 256 ? static_cast<char>(code) : '?';
    text.remove_prefix(size);
  }
  return out;
}

std::string printableUtf8(std::string_view text) {
  constexpr unsigned kFirstPrintable = 0x20, kDelete = 0x7F;
  std::string printable(text);
  for (char& c : printable) {
    const unsigned code = static_cast<unsigned char>(c);
    const bool isUndefined = code >= 0x80 && code < 0xA0 && kUpperControls[code - 0x80] == code;
    if (code < kFirstPrintable || code == kDelete || isUndefined) {
      c = ' ';
    }
  }
  return utf8FromWindows1252(printable);
}

}  // namespace vorn
