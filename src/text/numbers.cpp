#include "text/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "text/reals.h"

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
  std::string text = fixedText(value, decimals);
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text;
}

double leadingNumber(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && text[i] == ' ') ++i;
  const bool isNegative = i < text.size() && text[i] == '-';
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
  if (i == text.size() || !(isDigit(text[i]) || text[i] == '.')) return 0;
  std::string number(text.substr(i));
  // An exponent may be written with a d, too. What follows the number is not looked at.
  for (char& c : number) {
    if (c == 'd' || c == 'D') c = 'e';
  }
  const auto parsed = parseReal(number);
  if (!parsed) return 0;
  return isNegative ? -parsed->value : parsed->value;
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
