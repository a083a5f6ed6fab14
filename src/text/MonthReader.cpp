#include "text/MonthReader.h"

#include "text/IcuStatus.h"
#include "text/Locale.h"

#include <unicode/calendar.h>

#include <utility>

namespace ambulet {

// ICU's calendar runs in GMT and gets local time as if it were UTC, because ICU's time zone data is
// often older than the system's.
MonthReader::MonthReader(DayOffsets offsets) : _offsets(std::move(offsets)) {
    UErrorCode status = U_ZERO_ERROR;
    _calendar.reset(icu::Calendar::createInstance(*icu::TimeZone::getGMT(),
                                                  icu::Locale(dateLocale().c_str()), status));
    orThrow(status);
}

MonthReader::~MonthReader() = default;

MonthReader::Month MonthReader::month(std::chrono::sys_seconds instant) {
    UErrorCode status = U_ZERO_ERROR;
    const std::chrono::milliseconds local = instant.time_since_epoch() + _offsets.at(instant);
    _calendar->setTime(static_cast<UDate>(local.count()), status);
    const Month month = {_calendar->get(UCAL_ERA, status), _calendar->get(UCAL_YEAR, status),
                         _calendar->get(UCAL_MONTH, status),
                         _calendar->get(UCAL_IS_LEAP_MONTH, status) != 0};
    orThrow(status);
    return month;
}

}  // namespace ambulet
