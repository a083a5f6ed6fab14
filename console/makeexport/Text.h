#pragma once

#include <charconv>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace makeexport {

/// Numbers, days and attributes as text, independent of the locale.

/// `number` is below 100.
inline void putTwoDigits(char* place, unsigned number) {
    place[0] = static_cast<char>('0' + number / 10);
    place[1] = static_cast<char>('0' + number % 10);
}

inline void appendTwoDigits(std::string& text, unsigned number) {
    char digits[2];
    putTwoDigits(digits, number);
    text.append(digits, 2);
}

inline void appendNumber(std::string& text, std::int64_t number) {
    char digits[20];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number);
    text.append(digits, static_cast<std::size_t>(end - digits));
}

/// `scaled` is the number times 10 to the power of `decimals`, and not negative: 1205 with 2
/// decimals is "12.05".
inline void appendDecimal(std::string& text, std::int64_t scaled, int decimals) {
    std::int64_t unit = 1;
    for (int i = 0; i < decimals; ++i) {
        unit *= 10;
    }
    appendNumber(text, scaled / unit);
    if (decimals > 0) {
        text += '.';
        for (std::int64_t rest = scaled % unit; unit > 1; rest %= unit) {
            unit /= 10;
            text += static_cast<char>('0' + rest / unit);
        }
    }
}

/// "2024-03-09".
inline void appendDay(std::string& text, std::chrono::local_days day) {
    const std::chrono::year_month_day date(day);
    appendNumber(text, int(date.year()));
    text += '-';
    appendTwoDigits(text, unsigned(date.month()));
    text += '-';
    appendTwoDigits(text, unsigned(date.day()));
}

/// ` name="value"`, a blank first; `value` stands in XML as it is.
inline void appendAttribute(std::string& text, std::string_view name, std::string_view value) {
    text += ' ';
    text += name;
    text += "=\"";
    text += value;
    text += '"';
}

}  // namespace makeexport
