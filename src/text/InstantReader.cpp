#include "text/InstantReader.h"

#include "text/IcuStatus.h"

#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <memory>

// Phones write one form, and there may be millions of it, so that form is read by hand. Whatever
// else the pattern lets through (a "Z" for the offset, one-digit months, digits of other scripts)
// is rare and left to ICU, at a hundred times the cost. Where both can read a text they agree;
// years before 1583 are ICU's because it has the Julian calendar there.

using namespace std::chrono;
using namespace std::chrono_literals;

namespace {

constexpr sys_days tooLate = 32767y / January / 1;

constexpr std::string_view exactForm = "dddd-dd-dd dd:dd:dd sdddd";

bool hasExactForm(std::string_view text) {
    return text.size() == exactForm.size() &&
           std::equal(text.begin(), text.end(), exactForm.begin(), [](char character, char form) {
               switch (form) {
               case 'd':
                   return '0' <= character && character <= '9';
               case 's':
                   return character == '+' || character == '-';
               default:
                   return character == form;
               }
           });
}

unsigned twoDigits(std::string_view text, std::size_t at) {
    return static_cast<unsigned>(text[at] - '0') * 10 + static_cast<unsigned>(text[at + 1] - '0');
}

icu::SimpleDateFormat* newFormat() {
    UErrorCode status = U_ZERO_ERROR;
    auto format = std::make_unique<icu::SimpleDateFormat>(u"yyyy-MM-dd HH:mm:ss Z",
                                                          icu::Locale::getUS(), status);
    // Numbers alone are read, not a month's name.
    format->setBooleanAttribute(UDAT_PARSE_MULTIPLE_PATTERNS_FOR_MATCH, false, status);
    orThrow(status);
    format->setTimeZone(*icu::TimeZone::getGMT());
    format->setLenient(false);
    return format.release();
}

}  // namespace

InstantReader::InstantReader() = default;
InstantReader::~InstantReader() = default;

std::optional<sys_seconds> InstantReader::instant(std::string_view text) {
    const std::optional<sys_seconds> exact = exactInstant(text);
    return exact ? exact : instantInOtherForm(text);
}

std::optional<sys_seconds> InstantReader::exactInstant(std::string_view text) {
    if (!hasExactForm(text)) {
        return std::nullopt;
    }
    const year_month_day date{year(static_cast<int>(twoDigits(text, 0) * 100 + twoDigits(text, 2))),
                              month(twoDigits(text, 5)), day(twoDigits(text, 8))};
    const hours hour(twoDigits(text, 11));
    const minutes minute(twoDigits(text, 14));
    const seconds second(twoDigits(text, 17));
    const hours offsetHours(twoDigits(text, 21));
    const minutes offsetMinutes(twoDigits(text, 23));
    if (date.year() < 1583y || !date.ok() || hour >= 24h || minute >= 60min || second >= 60s ||
        offsetHours >= 24h || offsetMinutes >= 60min) {
        return std::nullopt;
    }
    const seconds offset = offsetHours + offsetMinutes;
    return sys_days(date) + hour + minute + second - (text[20] == '-' ? -offset : offset);
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
