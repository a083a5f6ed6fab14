#include "text/InstantReader.h"

#include "text/IcuStatus.h"

#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <memory>

namespace ambulet {

// Phones write one form, and an export has millions of instants, so that form is parsed by hand.
// All other texts that match the pattern are rare. ICU parses them, at over a hundred times the
// cost. They have
// - another spelling of the offset, such as "Z" or "-08:00",
// - more or fewer digits in a field (ICU 72 rejects one-digit days, minutes and seconds),
// - digits of other scripts or additional blanks, or
// - a year before 1583 (before 15 October 1582, ICU uses the Julian calendar).
//
// If both parsers accept a text, the results are equal.

using namespace std::chrono;
using namespace std::chrono_literals;

namespace {

constexpr sys_days tooLate = 32767y / January / 1;

/// Reads numbers at fixed positions of a text.
class Digits {
  public:
    explicit Digits(std::string_view text) : _text(text.data()) {}

    [[gnu::always_inline]] int two(std::size_t at) {
        return static_cast<int>(one(at) * 10 + one(at + 1));
    }

    /// Whether all characters that were read so far are digits.
    bool areDigits() const { return _overflow < 0x80; }

  private:
    [[gnu::always_inline]] unsigned one(std::size_t at) {
        const unsigned digit = static_cast<unsigned char>(_text[at] - '0');
        _overflow |= digit + (0x80 - 10);  // 0x80 or more unless this is a digit
        return digit;
    }

    const char* _text;
    unsigned _overflow = 0;
};

// The exact form is yyyy-MM-dd HH:mm:ss +hhmm.

/// The time of day. Empty if the text does not have the size of the exact form, or has no time
/// where that form has one.
std::optional<seconds> exactTime(std::string_view text) {
    if (text.size() != 25 || text[13] != ':' || text[16] != ':') {
        return std::nullopt;
    }
    Digits digits(text);
    const hours hour(digits.two(11));
    const minutes minute(digits.two(14));
    const seconds second(digits.two(17));
    if (!digits.areDigits() || hour >= 24h || minute >= 60min || second >= 60s) {
        return std::nullopt;
    }
    return hour + minute + second;
}

/// The instant of 00:00:00 with the date and the offset. `text` has the size of the exact form.
/// Empty if date and offset do not have that form.
std::optional<sys_seconds> exactMidnight(std::string_view text) {
    if (text[4] != '-' || text[7] != '-' || text[10] != ' ' || text[19] != ' ' ||
        (text[20] != '+' && text[20] != '-')) {
        return std::nullopt;
    }
    Digits digits(text);
    const year year(digits.two(0) * 100 + digits.two(2));
    const month month(static_cast<unsigned>(digits.two(5)));
    const day day(static_cast<unsigned>(digits.two(8)));
    const hours offsetHours(digits.two(21));
    const minutes offsetMinutes(digits.two(23));
    const year_month_day date(year, month, day);
    if (!digits.areDigits() || year < 1583y || !date.ok() || offsetHours >= 24h ||
        offsetMinutes >= 60min) {
        return std::nullopt;
    }
    const seconds offset = offsetHours + offsetMinutes;
    return sys_days(date) - (text[20] == '-' ? -offset : offset);
}

/// Whether two texts of that size have the same bytes before and after the time.
bool differInTimeOnly(std::string_view one, std::string_view other) {
    return one.substr(0, 11) == other.substr(0, 11) && one.substr(19) == other.substr(19);
}

// Without setParseNoExponent, "1e3" would be read as 1000 in any field.
icu::NumberFormat* newNumberFormat(UErrorCode& status) {
    auto format = std::make_unique<icu::DecimalFormat>(
        u"0", icu::DecimalFormatSymbols(icu::Locale::getUS(), status), status);
    format->setParseNoExponent(true);
    return format.release();
}

icu::SimpleDateFormat* newFormat() {
    UErrorCode status = U_ZERO_ERROR;
    auto format = std::make_unique<icu::SimpleDateFormat>(u"yyyy-MM-dd HH:mm:ss Z",
                                                          icu::Locale::getUS(), status);
    // Otherwise the name of a month is accepted in place of its number.
    format->setBooleanAttribute(UDAT_PARSE_MULTIPLE_PATTERNS_FOR_MATCH, false, status);
    format->adoptNumberFormat(newNumberFormat(status));
    orThrow(status);
    format->setTimeZone(*icu::TimeZone::getGMT());
    format->setLenient(false);
    return format.release();
}

}  // namespace

InstantReader::InstantReader() = default;
InstantReader::~InstantReader() = default;

std::optional<sys_seconds> InstantReader::instant(std::string_view text) {
    const std::optional<seconds> time = exactTime(text);
    if (!time) {
        return instantInOtherForm(text);
    }
    if (!differInTimeOnly(text, _lastExact)) {
        const std::optional<sys_seconds> midnight = exactMidnight(text);
        if (!midnight) {
            return instantInOtherForm(text);
        }
        _lastMidnight = *midnight;
        _lastExact = text;
    }
    return _lastMidnight + *time;
}

std::optional<sys_seconds> InstantReader::exactInstant(std::string_view text) {
    const std::optional<seconds> time = exactTime(text);
    const std::optional<sys_seconds> midnight = time ? exactMidnight(text) : std::nullopt;
    return midnight ? std::optional(*midnight + *time) : std::nullopt;
}

std::optional<sys_seconds> InstantReader::instantInOtherForm(std::string_view text) {
    if (_format == nullptr) {
        _format.reset(newFormat());
    }
    const icu::UnicodeString unicode = icu::UnicodeString::fromUTF8(text);
    icu::ParsePosition end(0);
    const sys_time<milliseconds> instant(
        milliseconds(static_cast<std::int64_t>(_format->parse(unicode, end))));
    const icu::UnicodeString rest = unicode.tempSubString(end.getIndex());
    const bool isWhole = std::all_of(rest.getBuffer(), rest.getBuffer() + rest.length(),
                                     [](char16_t unit) { return unit == u' ' || unit == u'\t'; });
    if (end.getIndex() == 0 || !isWhole || instant >= tooLate) {
        return std::nullopt;
    }
    return floor<seconds>(instant);
}

}  // namespace ambulet
