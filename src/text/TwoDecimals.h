#pragma once

#include <string>

namespace ambulet {

/// `number` with two digits after a ".", like printf's "%.2f" in the C locale. The exact binary
/// value is rounded, half to even: 2.125 to 2.12, 2.375 to 2.38. A number that is not finite gives
/// "inf" or "nan", with a "-" if its sign bit is set. The same in every locale. Any thread.
std::string twoDecimals(double number);

}  // namespace ambulet
