#pragma once

#include <string>

namespace ambulet {

/// `number` with two digits after a ".", like printf's "%.2f" in the C locale. The exact binary
/// value is rounded, half to even: 2.125 to 2.12, 2.375 to 2.38. "inf" and "nan" if it is not
/// finite. The same in every locale. Any thread.
std::string twoDecimals(double number);

}  // namespace ambulet
