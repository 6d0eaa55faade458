#include "text/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace vorn {
namespace {

constexpr int kSignificantDigits = 15;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace

double roundEven(double value) {
  return std::nearbyint(value);
}

int roundToInt(double value) {
  return static_cast<int>(roundEven(value));
}

double roundDecimals(double value, int decimals) {
  const double scale = std::pow(10.0, decimals);
  return roundEven(value * scale) / scale;
}

int wholePart(double value) {
  return static_cast<int>(std::floor(value));
}

int saturatedSum(int a, int b) {
  const std::int64_t sum = std::int64_t{a} + b;
  return static_cast<int>(
      std::clamp<std::int64_t>(sum, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

std::string numberText(double value) {
  if (value == 0) return "0";  // never "-0"
  const int magnitude = static_cast<int>(std::floor(std::log10(std::fabs(value)))) + 1;
  const int decimals = magnitude >= kSignificantDigits ? 0 : kSignificantDigits - magnitude;
  char digits[400];
  const auto end =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals).ptr;
  std::string text(digits, end);
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text;
}

double leadingNumber(std::string_view text) {
  std::string number;
  std::size_t i = 0;
  while (i < text.size() && text[i] == ' ') ++i;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
    if (text[i] == '-') number += '-';
    ++i;
  }
  bool hasDigits = false, hasPoint = false;
  for (; i < text.size() && (isDigit(text[i]) || (text[i] == '.' && !hasPoint)); ++i) {
    hasPoint = hasPoint || text[i] == '.';
    hasDigits = hasDigits || isDigit(text[i]);
    number += text[i];
  }
  if (!hasDigits) return 0;
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E' || text[i] == 'd' || text[i] == 'D')) {
    std::string exponent = "e";
    std::size_t j = i + 1;
    if (j < text.size() && (text[j] == '-' || text[j] == '+')) {
      if (text[j] == '-') exponent += '-';
      ++j;
    }
    const std::size_t firstDigit = j;
    while (j < text.size() && isDigit(text[j])) exponent += text[j++];
    if (j > firstDigit) number += exponent;
  }
  double value = 0;
  const auto parsed = std::from_chars(number.data(), number.data() + number.size(), value);
  return parsed.ec == std::errc() ? value : 0;
}

std::string countedUnit(double count, const std::string& unit) {
  return numberText(count) + " " + unit + (count > 1 ? "s" : "");
}

std::string fractionDigits(const std::string& number) {
  const std::size_t point = number.find('.');
  const std::string digits = (point == std::string::npos ? "" : number.substr(point + 1)) + "000";
  std::string spoken;
  for (std::size_t i = 0; i < 3; ++i) {
    spoken += digits[i];
    spoken += ' ';
  }
  return spoken;
}

}  // namespace vorn
