#pragma once

#include <string>

namespace ambulet {

/// `number` with two digits after a ".", as printf's "%.2f" has it in the plain locale: the
/// number's exact binary value is rounded, and one half way goes to the even digit (2.125
/// to 2.12, 2.375 to 2.38). The same in every locale, without grouping. "inf", "nan" where it is
/// none. Any thread.
std::string twoDecimals(double number);

}  // namespace ambulet
