// fuzz_numbers: integerValue and doubleValue must read the same number from the start of a text as
// an independent implementation.

#include "Rule.h"
#include "text/Numbers.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

using namespace ambulet;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

using Limits = std::numeric_limits<std::int64_t>;

// The length of the white space character at the start of the text; 0 if there is none. ICU decides
// what white space is. No such character has more than three bytes.
std::size_t spaceLength(std::string_view text) {
    for (std::size_t length = 1; length <= std::min<std::size_t>(3, text.size()); ++length) {
        const auto start = icu::UnicodeString::fromUTF8(text.substr(0, length));
        if (start.length() == 1 && u_isUWhiteSpace(start[0]) != 0) {
            return length;
        }
    }
    return 0;
}

std::string_view withoutSpace(std::string_view text) {
    while (const std::size_t length = spaceLength(text)) {
        text.remove_prefix(length);
    }
    return text;
}

bool isDigit(std::string_view text, std::size_t at) {
    return at < text.size() && text[at] >= '0' && text[at] <= '9';
}

// Computes the number digit by digit, in 128 bits, so that nothing overflows.
std::int64_t expectedInteger(std::string_view text) {
    text = withoutSpace(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text = withoutSpace(text.substr(1));
    }
    __extension__ __int128 value = 0;
    for (std::size_t at = 0; isDigit(text, at) && value <= Limits::max(); ++at) {
        value = value * 10 + (text[at] - '0');
    }
    value = negative ? -value : value;
    return value > Limits::max()   ? Limits::max()
           : value < Limits::min() ? Limits::min()
                                   : static_cast<std::int64_t>(value);
}

// Uses std::from_chars, which ignores the locale. Its argument begins with a digit or a point, so
// "inf" and "nan" are not read. Of a hexadecimal number only the 0 is read.
double expectedDouble(std::string_view text) {
    text = withoutSpace(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    if (!isDigit(text, 0) && !(text.starts_with('.') && isDigit(text, 1))) {
        return 0;
    }
    double value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec == std::errc::result_out_of_range) {
        // The exponent and the position of the first digit other than 0 tell whether the number is
        // too large or too small.
        const std::string_view number(text.data(),
                                      static_cast<std::size_t>(read.ptr - text.data()));
        const std::size_t exponent = std::min(number.find_first_of("eE"), number.size());
        const std::size_t point = std::min(number.find('.'), exponent);
        const std::size_t first = number.find_first_of("123456789");
        const std::int64_t power =
            exponent < number.size() ? expectedInteger(number.substr(exponent + 1)) : 0;
        const std::int64_t place = std::int64_t(point) - std::int64_t(first);
        value = power > -place ? std::numeric_limits<double>::infinity() : 0;
    }
    return negative ? -value : value;
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    require(integerValue(text) == expectedInteger(text), "the integer is the one expected");
    const double read = doubleValue(text);
    require(!std::isnan(read), "the double is not NaN");
    require(std::bit_cast<std::uint64_t>(read) ==
                std::bit_cast<std::uint64_t>(expectedDouble(text)),
            "the double is the one expected, to the last bit");
    return 0;
}
