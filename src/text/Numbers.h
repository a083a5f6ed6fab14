#pragma once

#include <cstdint>
#include <string_view>

namespace ambulet {

/// Read the number that a UTF-8 text starts with, and ignore the rest. White space is what Unicode
/// calls so. The locale makes no difference. Any thread.

/// Reads white space, one sign, white space, ASCII digits; all but the digits may be missing. 0 if
/// there are no digits. The nearest end of the range if the number is out of range.
std::int64_t integerValue(std::string_view text);

/// Reads white space and then the longest decimal number, with "." and exponent if it has them:
/// "1.5e3". 0 if there is no number. Infinity or 0 if the number is too large or too small.
/// Hexadecimal numbers, "inf" and "nan" are not numbers here.
double doubleValue(std::string_view text);

}  // namespace ambulet
