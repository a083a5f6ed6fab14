#include "text/LocalTime.h"

#include <ctime>

namespace ambulet {

// Everything here is computed from the offset of local time from UTC at some instants. The code
// assumes that no zone changes its offset twice within two days. The closest two changes in the
// time zone database are about four days apart (Freetown, September 1939).

using namespace std::chrono;
using namespace std::chrono_literals;

namespace {

/// Local time, as if it were UTC.
sys_seconds wallClock(sys_seconds instant) {
    return instant + offsetFromUtc(instant);
}

/// The instant at which the offset changes to that of `after`. `before` must have another offset.
sys_seconds change(sys_seconds before, sys_seconds after) {
    const seconds offset = offsetFromUtc(after);
    while (after - before > 1s) {
        const sys_seconds middle = before + (after - before) / 2;
        (offsetFromUtc(middle) == offset ? after : before) = middle;
    }
    return after;
}

}  // namespace

void readTimeZone() {
    ::tzset();
}

seconds offsetFromUtc(sys_seconds instant) {
    const std::time_t time = instant.time_since_epoch().count();
    std::tm parts{};
    return localtime_r(&time, &parts) == nullptr ? 0s : seconds(parts.tm_gmtoff);
}

year_month_day localDate(sys_seconds instant) {
    return floor<days>(wallClock(instant));
}

LocalDay localDay(sys_seconds instant) {
    const seconds offset = offsetFromUtc(instant);
    const sys_days day = floor<days>(instant + offset);
    LocalDay period{day, day - offset, day + 24h - offset};
    if (offsetFromUtc(period.begin) != offset) {
        period.begin = change(period.begin, instant);
    }
    if (offsetFromUtc(period.end - 1s) != offset) {
        period.end = change(instant, period.end - 1s);
    }
    return period;
}

std::optional<sys_seconds> startOfDay(year_month_day date) {
    if (!date.ok()) {
        return std::nullopt;
    }
    // No offset exceeds 16 hours, so a change at this midnight lies between the two instants below.
    // The offset before the change is tried first: if the clock is put back, that offset gives the
    // earlier midnight.
    const sys_seconds midnight = sys_days(date);
    for (const seconds offset : {offsetFromUtc(midnight - 16h), offsetFromUtc(midnight + 16h)}) {
        if (offsetFromUtc(midnight - offset) == offset) {
            return midnight - offset;
        }
    }
    return std::nullopt;
}

}  // namespace ambulet
