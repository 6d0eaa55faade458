/// Real numbers to and from plain text, with a point in every locale. Pure;
/// standard library only, which need not know reals in <charconv>.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// A number and how many characters of the text it took.
struct ParsedReal {
  double value;
  std::size_t length;
};

/// The number at the very front of `text`: a minus sign, digits with one point, an
/// exponent. Nothing where there is none or where it fits no double.
std::optional<ParsedReal> parseReal(std::string_view text);

constexpr std::size_t kLongestReal = 700;  ///< characters: the largest double and 340 decimals

/// `value`, finite, with `decimals` digits behind the point (0 .. 340) and no exponent.
std::string fixedText(double value, int decimals);

}  // namespace vorn
