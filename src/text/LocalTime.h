#pragma once

#include <chrono>
#include <optional>

namespace ambulet {

/// The Gregorian calendar in local time, by the system's time zone data. Local time is that of the
/// time zone at the process's start or, if later, at the last `readTimeZone`. Any thread.
///
/// Instants are of the years -32766 to 32766.

/// Reads anew which time zone the system is set to.
void readTimeZone();

/// Seconds that local time is ahead of UTC at `instant`.
std::chrono::seconds offsetFromUtc(std::chrono::sys_seconds instant);

/// The local calendar date at `instant`.
std::chrono::year_month_day localDate(std::chrono::sys_seconds instant);

/// A stretch of a local day: `date` is the local date of every instant from `begin` up to, and
/// without, `end`.
struct LocalDay {
    std::chrono::year_month_day date;
    std::chrono::sys_seconds begin;
    std::chrono::sys_seconds end;

    bool contains(std::chrono::sys_seconds instant) const {
        return begin <= instant && instant < end;
    }
};

/// The stretch around `instant`: its whole day, or where the clock was changed on that day, the
/// part of the day before or after the change.
LocalDay localDay(std::chrono::sys_seconds instant);

/// The instant at which the clock shows 00:00 on `date`, the earlier one if it does so twice; none
/// if it never does (the clock was put forward over it) or if `date` is no date.
std::optional<std::chrono::sys_seconds> startOfDay(std::chrono::year_month_day date);

}  // namespace ambulet
