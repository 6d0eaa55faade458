/// Rounding, numbers as text and times in words. Pure; standard library only.
#pragma once

#include <string>
#include <string_view>

namespace vorn {

/// To the nearest whole number, halves to even.
double roundEven(double value);
/// The same as an int; `value` must lie within its range.
int roundToInt(double value);
/// To `decimals` places, halves to even.
double roundDecimals(double value, int decimals);
/// The largest whole number not above `value`, as an int.
int wholePart(double value);

/// `a` + `b`, held at the ends of an int's range.
int saturatedSum(int a, int b);

/// At most 15 significant digits, no trailing zeros, no exponent, "0" before the point.
std::string numberText(double value);

/// The number that `text` begins with, 0 if none: blanks, a sign, digits with
/// one point, an exponent after e or d.
double leadingNumber(std::string_view text);

/// "1 hour", "2 hours": one unit of a time.
std::string countedUnit(double count, const std::string& unit);
/// The first three digits after the point of `number` (a `numberText`), each followed by a blank.
std::string fractionDigits(const std::string& number);

}  // namespace vorn
