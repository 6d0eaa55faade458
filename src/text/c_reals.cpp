#include "text/c_reals.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace vorn::c {
namespace {

std::size_t digitsAt(std::string_view text, std::size_t from) {
  const std::size_t end = text.find_first_not_of("0123456789", from);
  return (end == std::string_view::npos ? text.size() : end) - from;
}

/// Characters of the number in front: 0 where there is none.
std::size_t lengthOfReal(std::string_view text) {
  std::size_t at = text.starts_with('-') ? 1 : 0;
  const std::size_t whole = digitsAt(text, at);
  at += whole;
  std::size_t fraction = 0;
  if (at < text.size() && text[at] == '.') {
    fraction = digitsAt(text, at + 1);
    at += whole + fraction > 0 ? 1 + fraction : 0;
  }
  if (whole + fraction == 0) return 0;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    const bool isSigned = at + 1 < text.size() && (text[at + 1] == '-' || text[at + 1] == '+');
    const std::size_t begin = at + (isSigned ? 2 : 1);
    const std::size_t exponent = begin < text.size() ? digitsAt(text, begin) : 0;
    if (exponent > 0) at = begin + exponent;
  }
  return at;
}

}  // namespace

std::optional<ParsedReal> parseReal(std::string_view text) {
  const std::size_t length = lengthOfReal(text);
  if (length == 0) return std::nullopt;
  errno = 0;
  const double value = std::strtod(std::string(text.substr(0, length)).c_str(), nullptr);
  const bool fits = errno != ERANGE || (value != 0 && std::isfinite(value));
  return fits ? std::optional(ParsedReal{value, length}) : std::nullopt;
}

std::string fixedText(double value, int decimals) {
  char text[kLongestReal];
  const int length = std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return {text, static_cast<std::size_t>(length)};
}

}  // namespace vorn::c
