/// What `reals.h` promises, by the C functions: for where the C++ library has no real
/// numbers. They read and write as the locale has it, which nothing there changes.
#pragma once

#include "text/reals.h"

namespace vorn::c {

std::optional<ParsedReal> parseReal(std::string_view text);
std::string fixedText(double value, int decimals);

}  // namespace vorn::c
