#pragma once

#include <cstdint>
#include <string_view>

namespace ambulet {

/// These functions read a number at the start of a UTF-8 text, and ignore the rest of the text.
/// White space means the characters with the Unicode property White_Space. The locale makes no
/// difference. Any thread.

/// Reads ASCII digits. White space, one sign, and white space again may come before them. 0 if
/// there are no digits. The nearest end of the range if the number is out of range.
std::int64_t integerValue(std::string_view text);

/// Reads the longest decimal number, such as "2", ".5" or "-1.5e3". White space may come before it.
/// 0 if there is no number, or if its magnitude is too small for a double. Infinity, with the
/// number's sign, if the magnitude is too large. "inf" and "nan" are not numbers here, and of a
/// hexadecimal number only the 0 before the "x" is read.
double doubleValue(std::string_view text);

}  // namespace ambulet
