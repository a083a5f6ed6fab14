#include "text/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <locale.h>
#include <memory>
#include <string>
#include <type_traits>

namespace ambulet {

namespace {

// All characters with the Unicode property White_Space.
constexpr std::string_view whiteSpace[] = {
    " ",      "\t",     "\n",     "\v",     "\f",     "\r",     "\u0085", "\u00A0", "\u1680",
    "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008",
    "\u2009", "\u200A", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"};

std::string_view withoutLeadingSpace(std::string_view text) {
    const auto leads = [&text](std::string_view space) { return text.starts_with(space); };
    // Nearly every value in an export starts with a visible ASCII character, so the loop is
    // skipped.
    while (!text.empty() && (text.front() <= ' ' || text.front() > '~')) {
        const auto* const space = std::ranges::find_if(whiteSpace, leads);
        if (space == std::end(whiteSpace)) {
            break;
        }
        text.remove_prefix(space->size());
    }
    return text;
}

bool startsWithSign(std::string_view text) {
    return text.starts_with('-') || text.starts_with('+');
}

std::size_t digitsAt(std::string_view text, std::size_t begin) {
    const std::size_t end = text.find_first_not_of("0123456789", begin);
    return std::min(end, text.size()) - std::min(begin, text.size());
}

/// The length of the decimal number that `text` starts with; 0 if it starts with none.
std::size_t decimalNumberLength(std::string_view text) {
    std::size_t end = startsWithSign(text) ? 1 : 0;
    std::size_t digits = digitsAt(text, end);
    end += digits;
    if (end < text.size() && text[end] == '.') {
        const std::size_t fraction = digitsAt(text, end + 1);
        end += 1 + fraction;
        digits += fraction;
    }
    if (digits == 0) {
        return 0;
    }
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        const std::size_t sign = startsWithSign(text.substr(end + 1)) ? 1 : 0;
        if (const std::size_t exponent = digitsAt(text, end + 1 + sign); exponent > 0) {
            end += 1 + sign + exponent;
        }
    }
    return end;
}

using LocaleHandle = std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&freelocale)>;

}  // namespace

std::int64_t integerValue(std::string_view text) {
    using Limits = std::numeric_limits<std::int64_t>;
    text = withoutLeadingSpace(text);
    const bool negative = text.starts_with('-');
    if (startsWithSign(text)) {
        text = withoutLeadingSpace(text.substr(1));
    }
    std::uint64_t magnitude = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), magnitude);
    const std::uint64_t largest = std::uint64_t{Limits::max()} + (negative ? 1 : 0);
    if (read.ec == std::errc::result_out_of_range || magnitude > largest) {
        return negative ? Limits::min() : Limits::max();
    }
    return static_cast<std::int64_t>(negative ? 0 - magnitude : magnitude);
}

double doubleValue(std::string_view text) {
    static const LocaleHandle plain(newlocale(LC_ALL_MASK, "C", nullptr), freelocale);
    text = withoutLeadingSpace(text);
    const std::string number(text.substr(0, decimalNumberLength(text)));
    return number.empty() ? 0 : strtod_l(number.c_str(), nullptr, plain.get());
}

}  // namespace ambulet
