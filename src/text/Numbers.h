#pragma once

#include <cstdint>
#include <string_view>

namespace ambulet {

/// Numbers read from UTF-8 texts, the same in every locale. Whatever follows the number is ignored.
/// White space is Unicode's. Any thread.

/// White space, one sign, white space, ASCII digits. 0 where there are no digits; the end of the
/// range where the number is beyond it.
std::int64_t integerValue(std::string_view text);

/// White space, then the longest decimal number with a "." and an exponent, if any: "1.5e3". 0
/// where there is none; infinity or 0 where it is too large or too small. No hexadecimal numbers,
/// no "inf", no "nan".
double doubleValue(std::string_view text);

}  // namespace ambulet
