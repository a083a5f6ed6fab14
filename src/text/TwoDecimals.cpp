#include "text/TwoDecimals.h"

#include <array>
#include <charconv>
#include <limits>

namespace ambulet {

std::string twoDecimals(double number) {
    constexpr std::size_t others = 5;  // a sign, the first digit, the point, two decimals
    std::array<char, std::numeric_limits<double>::max_exponent10 + others> text{};
    const auto written =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed, 2);
    return {text.data(), written.ptr};
}

}  // namespace ambulet
