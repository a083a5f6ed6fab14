#include "text/DateFormatter.h"

#include "text/IcuStatus.h"
#include "text/Locale.h"

#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <utility>

namespace ambulet {

DateFormatter::DateFormatter(std::unique_ptr<icu::DateFormat> format) : _format(std::move(format)) {
    // ICU gets local time as if it were UTC, because its time zone data may be years old.
    _format->setTimeZone(*icu::TimeZone::getGMT());
}

DateFormatter::DateFormatter(DateFormatter&&) noexcept = default;
DateFormatter& DateFormatter::operator=(DateFormatter&&) noexcept = default;
DateFormatter::~DateFormatter() = default;

DateFormatter DateFormatter::mediumDate() {
    std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createDateInstance(
        icu::DateFormat::kMedium, icu::Locale(dateLocale().c_str())));
    orThrow(format == nullptr ? U_MISSING_RESOURCE_ERROR : U_ZERO_ERROR);
    return DateFormatter(std::move(format));
}

DateFormatter DateFormatter::withPattern(std::string_view pattern) {
    UErrorCode status = U_ZERO_ERROR;
    auto format = std::make_unique<icu::SimpleDateFormat>(
        icu::UnicodeString::fromUTF8(pattern), icu::Locale(dateLocale().c_str()), status);
    orThrow(status);
    return DateFormatter(std::move(format));
}

std::string DateFormatter::string(std::chrono::sys_seconds instant) const {
    const std::chrono::sys_time<std::chrono::milliseconds> wallClock =
        instant + _offsets.at(instant);
    icu::UnicodeString text;
    _format->format(static_cast<UDate>(wallClock.time_since_epoch().count()), text);
    std::string utf8;
    return text.toUTF8String(utf8);
}

}  // namespace ambulet
