#include "text/reals.h"

#include <charconv>
#include <cmath>
#include <version>

#ifndef __cpp_lib_to_chars
#include "text/c_reals.h"
#endif

namespace vorn {

#ifdef __cpp_lib_to_chars

std::optional<ParsedReal> parseReal(std::string_view text) {
  double value = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value);
  if (parsed.ec != std::errc() || !std::isfinite(value)) return std::nullopt;  // "inf" and "nan" are words
  return ParsedReal{value, static_cast<std::size_t>(parsed.ptr - text.data())};
}

std::string fixedText(double value, int decimals) {
  char text[kLongestReal];
  return {text, std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals).ptr};
}

#else

std::optional<ParsedReal> parseReal(std::string_view text) {
  return c::parseReal(text);
}
std::string fixedText(double value, int decimals) {
  return c::fixedText(value, decimals);
}

#endif

}  // namespace vorn
